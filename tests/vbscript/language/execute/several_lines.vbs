Execute "x = 1" & vbCrLf & "x = x + 1"
WScript.Echo x  ' expect: 2
