Dim a()
ReDim a(2)
Erase a
WScript.Echo IsArray(a)  & "."  ' expect: True.
WScript.Echo UBound(a)  ' error: 9
