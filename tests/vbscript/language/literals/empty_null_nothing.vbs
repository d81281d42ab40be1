WScript.Echo TypeName(Empty)    ' expect: Empty
WScript.Echo TypeName(Null)     ' expect: Null
WScript.Echo TypeName(Nothing)  ' expect: Nothing
