x = 1 + #1/31/2003#
WScript.Echo TypeName(x) & " " & x  ' expect: Date 2/1/2003
