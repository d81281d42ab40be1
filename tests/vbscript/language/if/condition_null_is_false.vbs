If Null Then
  WScript.Echo "true"
Else
  WScript.Echo "false"  ' expect: false
End If
