x = #1/2/1900# * 2
WScript.Echo TypeName(x) & " " & x  ' expect: Double 6
