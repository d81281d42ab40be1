WScript.Echo UCase("aBc1") & LCase("aBc1")  ' expect: ABC1abc1
WScript.Echo IsNull(UCase(Null)) & IsNull(LCase(Null))  ' expect: TrueTrue
WScript.Echo AscW(UCase(ChrW(233)))  ' expect: 201
