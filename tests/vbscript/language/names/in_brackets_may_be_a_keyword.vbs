Dim [if]
[if] = "then"
WScript.Echo [if]  ' expect: then
