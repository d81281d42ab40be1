If Array(1) Then WScript.Echo "yes"  ' error: 13
