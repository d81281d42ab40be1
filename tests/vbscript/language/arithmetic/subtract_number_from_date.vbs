x = #2/1/2003# - 1
WScript.Echo TypeName(x) & " " & x  ' expect: Date 1/31/2003
