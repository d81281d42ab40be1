Option Explicit
Dim x
x = 1
WScript.Echo x  ' expect: 1
