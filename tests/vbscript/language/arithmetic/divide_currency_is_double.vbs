x = CCur(3) / CCur(2)
WScript.Echo TypeName(x) & " " & x  ' expect: Double 1.5
