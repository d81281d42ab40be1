WScript.Echo Len("")        ' expect: 0
WScript.Echo TypeName("")   ' expect: String
