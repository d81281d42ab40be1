WScript.Echo "" & (Nothing Is Nothing)  ' expect: True
