Function S(n)
  log = log & n
  S = n
End Function
Sub P(a, b, c)
End Sub
log = ""
P S(1), S(2), S(3)
WScript.Echo log  ' expect: 123
