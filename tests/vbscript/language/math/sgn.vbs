WScript.Echo Sgn(-5) & Sgn(0) & Sgn(2.5)  ' expect: -101
WScript.Echo TypeName(Sgn(2.5))  ' expect: Integer
WScript.Echo Sgn("-3")  ' expect: -1
