Option Explicit
Dim i, list(3), grid(), total ' some names
Const kLimit = &HFF&, kName = "a ""b""", kDay = #1/31/2000#
ReDim Preserve grid(i + 1, 2) : Erase list
For i = 1 To 10 Step -2 : If i = 3 Then Exit For Else total = total + i
Next
For Each o In list : Rem nothing
Next
Do While i < 3 : i = i + 1 : Loop
Do : Exit Do : Loop Until i >= 3
While True : Wend
Select Case i
  Case 1, 2: f 1,, x
  Case Else: f (1) + 2, 3
End Select
If a Then
ElseIf b Then c = 1
Else If d Then e = 2
End If
With New Thing
  .Name = "x" & .Value(1)(2).Next _
    & "y"
  f .a, -1
End With
On Error Resume Next
Set o.p(1) = Nothing
Call o.m(1, 2)
On Error GoTo 0
