x = CByte(255) + CByte(1)
WScript.Echo TypeName(x) & " " & x  ' expect: Integer 256
