Dim a(2, 3), b(), c
ReDim b(4)
For i = 0 To 2: For j = 0 To 3: a(i, j) = i * j: Next: Next
b(1) = a: c = b: c(1)(1, 2) = "x"
ReDim Preserve b(10)
Erase a
Sub Change(x): x = x & "y": ReDim b(2): End Sub
On Error Resume Next
Change b(3): Change c(1)(0, 0): Change a
For Each e In b: Print TypeName(e): Next
Execute "Function F(n): If n > 0 Then F = F(n - 1) & n: End Function"
Print F(5) & Eval("F(3)") & b(77)
With CreateObject("Scripting.Dictionary")
  .Add "k", Array(1, 2): Print .Item("k")(1)
End With
