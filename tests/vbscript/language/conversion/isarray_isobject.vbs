WScript.Echo IsArray(Array()) & IsArray(1)  ' expect: TrueFalse
WScript.Echo IsObject(Nothing) & IsObject(1) & IsObject(New RegExp)  ' expect: TrueFalseTrue
