x = CByte(1) - CByte(2)
WScript.Echo TypeName(x) & " " & x  ' expect: Integer -1
