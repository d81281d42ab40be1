Const T = True, E = Empty, U = Null
WScript.Echo T & TypeName(E) & TypeName(U)  ' expect: TrueEmptyNull
