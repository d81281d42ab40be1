If 0.1 Then WScript.Echo "true"  ' expect: true
If -3 Then WScript.Echo "true"   ' expect: true
If 0 Then WScript.Echo "true" Else WScript.Echo "false"  ' expect: false
