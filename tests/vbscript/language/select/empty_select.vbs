Select Case 1
End Select
WScript.Echo "ok"  ' expect: ok
