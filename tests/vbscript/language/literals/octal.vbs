WScript.Echo &O17    ' expect: 15
WScript.Echo &o777   ' expect: 511
WScript.Echo TypeName(&O17)  ' expect: Integer
