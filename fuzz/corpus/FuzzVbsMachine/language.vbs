Dim x, i
x = 0
For i = 1 To 10
  x = x + i
Next
Print x
Function Fib(n)
  If n < 2 Then
    Fib = n
  Else
    Fib = Fib(n - 1) + Fib(n - 2)
  End If
End Function
Print Fib(20)
Class P
  Public a
  Private b
  Public Property Get Bee: Bee = b: End Property
  Public Property Let Bee(v): b = v * 2: End Property
  Public Sub Class_Initialize: a = 7: End Sub
  Private Sub Class_Terminate: Print "gone": End Sub
  Public Function Add(x, y): Add = x + y + a: End Function
  Public Default Property Get Item(i): Item = "item" & i: End Property
End Class
Dim o: Set o = New P
o.Bee = 21
Print o.Bee & " " & o.a & " " & o.Add(1, 2) & o(5)
Set o = Nothing
Print "after"
Dim a(3), s
a(0) = 1: a(1) = "z"
s = ""
For i = 0 To 3: s = s & "[" & a(i) & "]": Next
Print s
Sub Inc(n): n = n + 1: End Sub
x = 5: Inc x: Print x
Inc a(0): Print a(0)
On Error Resume Next
y = 1 / 0
Print Err.Number & " " & Err.Description
Err.Clear
foo 1
Print Err.Number & " " & Err.Description
Dim d: Set d = CreateObject("Scripting.Dictionary")
d("a") = 1: d("a") = d("a") + 1
Print d("a") & d.Count & Err.Number
For Each k In d: Print k: Next
Select Case 3
 Case 1, 2: Print "no"
 Case 3: Print "three"
 Case Else: Print "else"
End Select
Print Eval("1+2*3")
Execute "zz = 9": Print zz
With New P
 .Bee = 4: Print .Bee
End With
Sub T: Dim q: q = 3: Execute "q = q + 1: r = q * 2": Print q & " " & Eval("r"): End Sub
T
ReDim m(2, 2): m(1, 2) = "k": Print m(1, 2) & UBound(m, 2)
Dim nn(1): nn(0) = Array(1, 2): nn(0)(1) = 5: Print nn(0)(1)
Set g = GetRef("Fib"): Print g(10)
