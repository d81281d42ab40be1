WScript.Echo DateAdd("yyyy", 1, #1/31/2003#)  ' expect: 1/31/2004
WScript.Echo DateAdd("q", 1, #1/31/2003#)  ' expect: 4/30/2003
WScript.Echo DateAdd("m", 1, #1/31/2003#)  ' expect: 2/28/2003
WScript.Echo DateAdd("m", -1, #3/31/2004#)  ' expect: 2/29/2004
WScript.Echo DateAdd("d", 1, #2/28/2004#)  ' expect: 2/29/2004
WScript.Echo DateAdd("y", 1, #1/1/2003#)  ' expect: 1/2/2003
WScript.Echo DateAdd("w", 1, #1/1/2003#)  ' expect: 1/2/2003
WScript.Echo DateAdd("ww", 1, #1/1/2003#)  ' expect: 1/8/2003
WScript.Echo DateAdd("h", 25, #1/1/2003#)  ' expect: 1/2/2003 1:00:00 AM
WScript.Echo DateAdd("n", 90, #1/1/2003#)  ' expect: 1/1/2003 1:30:00 AM
WScript.Echo DateAdd("s", -1, #1/1/2003#)  ' expect: 12/31/2002 11:59:59 PM
