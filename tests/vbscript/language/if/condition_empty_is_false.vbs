If Empty Then WScript.Echo "true" Else WScript.Echo "false"  ' expect: false
