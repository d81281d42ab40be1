WScript.Echo IsNull(Null + 1) & IsNull(1 - Null) & IsNull(Null * 0)  ' expect: TrueTrueTrue
WScript.Echo IsNull(Null / 2) & IsNull(Null \ 2) & IsNull(2 Mod Null) & IsNull(2 ^ Null)  ' expect: TrueTrueTrueTrue
WScript.Echo IsNull(-Null) & IsNull(Null + "a")  ' expect: TrueTrue
