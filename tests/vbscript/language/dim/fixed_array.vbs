Dim a(3)
WScript.Echo UBound(a) & " " & LBound(a) & " " & TypeName(a)  ' expect: 3 0 Variant()
WScript.Echo TypeName(a(3))  ' expect: Empty
