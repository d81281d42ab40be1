Sub P
  ExecuteGlobal "nw = 1"
End Sub
P
WScript.Echo nw  ' expect: 1
