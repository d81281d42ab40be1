Execute "Function F(n) : F = n * 2 : End Function"
WScript.Echo F(4)  ' expect: 8
