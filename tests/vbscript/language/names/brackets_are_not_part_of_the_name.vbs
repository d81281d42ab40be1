Dim plain
[plain] = 6
WScript.Echo plain  ' expect: 6
