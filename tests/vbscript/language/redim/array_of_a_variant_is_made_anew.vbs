x = 5
ReDim x(1)
WScript.Echo IsArray(x) & UBound(x)  ' expect: True1
