WScript.Echo "" & CBool(0)  ' expect: False
WScript.Echo "" & CBool(0.1)  ' expect: True
WScript.Echo "" & CBool(-5)  ' expect: True
