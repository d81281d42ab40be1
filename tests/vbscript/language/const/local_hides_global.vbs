Const N = 1
Sub P
  Const N = 2
  WScript.Echo N  ' expect: 2
End Sub
P
WScript.Echo N  ' expect: 1
