Sub P
  Execute "nw = 1"
End Sub
P
WScript.Echo TypeName(nw)  ' expect: Empty
