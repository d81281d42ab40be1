Dim a(1)
WScript.Echo VarType(a) & VarType(a(0))  ' expect: 82040
