WScript.Echo VarType(Empty) & VarType(Null)  ' expect: 01
WScript.Echo VarType(1) & " " & VarType(CLng(1)) & " " & VarType(CSng(1)) & " " & VarType(1.5)  ' expect: 2 3 4 5
WScript.Echo VarType(CCur(1)) & " " & VarType(Date) & " " & VarType("") & " " & VarType(Nothing)  ' expect: 6 7 8 9
WScript.Echo VarType(True) & " " & VarType(CByte(1)) & " " & VarType(Array())  ' expect: 11 17 8204
