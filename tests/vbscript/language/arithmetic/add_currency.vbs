x = CCur(1.5) + CCur(2.25)
WScript.Echo TypeName(x) & " " & x  ' expect: Currency 3.75
x = CCur(1.5) + 1
WScript.Echo TypeName(x) & " " & x  ' expect: Currency 2.5
