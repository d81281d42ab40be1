If True WScript.Echo 1  ' compile error: 1017
