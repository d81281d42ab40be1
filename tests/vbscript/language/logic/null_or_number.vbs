WScript.Echo TypeName(Null Or 5) & (Null Or 5)  ' expect: Integer5
WScript.Echo "" & IsNull(Null Or 0)  ' expect: True
