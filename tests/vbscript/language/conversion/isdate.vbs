WScript.Echo IsDate(#1/1/2003#) & IsDate("1/1/2003") & IsDate("12:30")  ' expect: TrueTrueTrue
WScript.Echo IsDate("abc") & IsDate("13/32/2003") & IsDate(5) & IsDate("")  ' expect: FalseFalseFalseFalse
WScript.Echo IsDate(Null) & IsDate(Empty)  ' expect: FalseFalse
