WScript.Echo Int(2.7) & Fix(2.7)  ' expect: 22
WScript.Echo Int(-2.7) & Fix(-2.7)  ' expect: -3-2
WScript.Echo Int(5)  ' expect: 5
WScript.Echo TypeName(Int(2.7))  ' expect: Double
WScript.Echo TypeName(Fix(5))  ' expect: Integer
