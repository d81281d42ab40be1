WScript.Echo IsNull(Null = Null) & IsNull(1 = Null) & IsNull("a" < Null)  ' expect: TrueTrueTrue
