Dim v
v = "global"
Sub P()
  Dim v
  v = "local"
  WScript.Echo v  ' expect: local
End Sub
P
WScript.Echo v  ' expect: global
