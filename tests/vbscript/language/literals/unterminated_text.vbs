WScript.Echo "abc  ' compile error: 1033
