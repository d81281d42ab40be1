WScript.Echo vbObjectError  ' expect: -2147221504
