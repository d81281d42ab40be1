WScript.Echo UBound(Split(""))  ' expect: -1
WScript.Echo UBound(Split("", ","))  ' expect: -1
