x = CCur(1.5) * CCur(1.5)
WScript.Echo TypeName(x) & " " & x  ' expect: Currency 2.25
