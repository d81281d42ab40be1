WScript.Echo IsEmpty(Empty) & IsEmpty(0) & IsEmpty("")  ' expect: TrueFalseFalse
WScript.Echo IsNull(Null) & IsNull(Empty) & IsNull("")  ' expect: TrueFalseFalse
