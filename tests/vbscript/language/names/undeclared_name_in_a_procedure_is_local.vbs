Sub P()
  hidden = 1
  WScript.Echo "" & hidden  ' expect: 1
End Sub
P
WScript.Echo TypeName(hidden)  ' expect: Empty
