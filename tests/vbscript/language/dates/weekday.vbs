WScript.Echo Weekday(#1/1/2003#)  ' expect: 4
WScript.Echo Weekday(#1/1/2003#, vbMonday)  ' expect: 3
WScript.Echo Weekday(#1/5/2003#)  ' expect: 1
WScript.Echo "" & IsNull(Weekday(Null))  ' expect: True
