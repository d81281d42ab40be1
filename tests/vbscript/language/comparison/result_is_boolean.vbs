WScript.Echo TypeName(1 < 2)  ' expect: Boolean
