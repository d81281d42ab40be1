' The index is an object, and getting its value takes the array away.
Dim a
Class C
  Public Default Property Get V
    a = 7
    V = 1
  End Property
End Class
Set o = New C
On Error Resume Next
a = Array(1, 2, 3)
a(o) = 1
WScript.Echo Err.Number & " " & a  ' expect: 13 7
Err.Clear
a = Array(1, 2, 3)
x = a(o)
WScript.Echo Err.Number & " " & a  ' expect: 13 7
Err.Clear
Sub Change(ByRef p)
  p = 5
End Sub
a = Array(1, 2, 3)
Change a(o)
WScript.Echo a  ' expect: 7
