x = CCur(1.5) - CLng(1)
WScript.Echo TypeName(x) & " " & x  ' expect: Currency 0.5
