WScript.Echo Abs(-5) & Abs(5) & Abs(-1.5)  ' expect: 551.5
WScript.Echo TypeName(Abs(-5)) & TypeName(Abs(-1.5))  ' expect: IntegerDouble
WScript.Echo Abs("-5")  ' expect: 5
WScript.Echo TypeName(Abs(True)) & Abs(True)  ' expect: Integer1
WScript.Echo "" & IsNull(Abs(Null))  ' expect: True
