x = #2/1/2003# - #1/31/2003#
WScript.Echo TypeName(x) & " " & x  ' expect: Double 1
