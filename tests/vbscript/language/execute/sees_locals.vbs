Sub P
  Dim v
  v = 1
  Execute "v = v + 1"
  WScript.Echo v  ' expect: 2
End Sub
P
