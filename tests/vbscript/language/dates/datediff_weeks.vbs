WScript.Echo DateDiff("w", #1/1/2003#, #1/14/2003#)  ' expect: 1
WScript.Echo DateDiff("ww", #1/1/2003#, #1/5/2003#)  ' expect: 1
WScript.Echo DateDiff("ww", #1/5/2003#, #1/11/2003#)  ' expect: 0
WScript.Echo DateDiff("ww", #1/1/2003#, #1/5/2003#, vbMonday)  ' expect: 0
