WScript.Echo CDbl(CSng(0.1))  ' expect: 0.100000001490116
