WScript.Echo Year(#2/3/2004#) & Month(#2/3/2004#) & Day(#2/3/2004#)  ' expect: 200423
WScript.Echo Year("2/3/2004")  ' expect: 2004
WScript.Echo "" & IsNull(Year(Null))  ' expect: True
