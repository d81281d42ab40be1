WScript.Echo TypeName(Null And 0) & (Null And 0)  ' expect: Integer0
WScript.Echo "" & IsNull(Null And 5)  ' expect: True
