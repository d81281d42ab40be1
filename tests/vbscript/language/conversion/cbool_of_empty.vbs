WScript.Echo "" & CBool(Empty)  ' expect: False
