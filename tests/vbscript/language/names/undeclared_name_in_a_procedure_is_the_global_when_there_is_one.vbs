seen = 1
Sub P()
  seen = seen + 1
End Sub
P
WScript.Echo seen  ' expect: 2
