If "abc" Then WScript.Echo "yes"  ' error: 13
