Dim a, b
WScript.Echo TypeName(a) & TypeName(b)  ' expect: EmptyEmpty
