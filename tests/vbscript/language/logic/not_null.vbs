WScript.Echo "" & IsNull(Not Null)  ' expect: True
