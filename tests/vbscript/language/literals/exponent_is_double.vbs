WScript.Echo TypeName(1e3)  ' expect: Double
WScript.Echo 1e3            ' expect: 1000
WScript.Echo 1.5E-3         ' expect: 0.0015
WScript.Echo 2E+2           ' expect: 200
