x = CByte(20) * CByte(20)
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 400
