Function S(n)
  trace = trace & n
  S = n
End Function
Sub P(a, b, c)
End Sub
trace = ""
P S(1), S(2), S(3)
WScript.Echo trace  ' expect: 123
