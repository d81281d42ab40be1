Dim a()
WScript.Echo IsArray(a) & TypeName(a)  ' expect: TrueVariant()
WScript.Echo UBound(a)  ' error: 9
