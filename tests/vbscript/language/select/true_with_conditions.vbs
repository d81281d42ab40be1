x = 15
Select Case True
  Case x < 10
    WScript.Echo "small"
  Case x < 20
    WScript.Echo "middle"  ' expect: middle
End Select
