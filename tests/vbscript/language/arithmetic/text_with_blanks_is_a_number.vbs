WScript.Echo " 5 " * 2  ' expect: 10
