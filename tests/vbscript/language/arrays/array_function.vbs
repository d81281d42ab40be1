a = Array(1, "b", 2.5)
WScript.Echo UBound(a) & TypeName(a(0)) & TypeName(a(1)) & TypeName(a(2))  ' expect: 2IntegerStringDouble
