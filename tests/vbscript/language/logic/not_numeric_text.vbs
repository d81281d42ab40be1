x = Not "5"
WScript.Echo TypeName(x) & " " & x  ' expect: Long -6
