WScript.Echo StrReverse("abc")  ' expect: cba
WScript.Echo Len(StrReverse(""))  ' expect: 0
