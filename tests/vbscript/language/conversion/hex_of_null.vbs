WScript.Echo "" & IsNull(Hex(Null))  ' expect: True
