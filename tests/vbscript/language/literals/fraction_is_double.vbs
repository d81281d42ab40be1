WScript.Echo TypeName(1.0)  ' expect: Double
WScript.Echo 1.0            ' expect: 1
WScript.Echo 2.50           ' expect: 2.5
