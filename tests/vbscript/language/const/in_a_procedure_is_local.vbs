Sub P
  Const N = 3
  WScript.Echo N  ' expect: 3
End Sub
P
WScript.Echo TypeName(N)  ' expect: Empty
