WScript.Echo IsNumeric(5) & IsNumeric("5") & IsNumeric(" 5.5 ") & IsNumeric("1e5") & IsNumeric("&H10")  ' expect: TrueTrueTrueTrueTrue
WScript.Echo IsNumeric("abc") & IsNumeric("") & IsNumeric("5x") & IsNumeric("1 2")  ' expect: FalseFalseFalseFalse
WScript.Echo IsNumeric(Empty) & IsNumeric(True)  ' expect: TrueTrue
WScript.Echo IsNumeric(Null) & IsNumeric(Array(1)) & IsNumeric(#1/1/2003#)  ' expect: FalseFalseFalse
WScript.Echo IsNumeric("$5") & IsNumeric("1,000") & IsNumeric("-5") & IsNumeric("5-")  ' expect: TrueTrueTrueTrue
