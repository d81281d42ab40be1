WScript.Echo DateDiff("yyyy", #12/31/2002#, #1/1/2003#)  ' expect: 1
WScript.Echo DateDiff("q", #3/31/2003#, #4/1/2003#)  ' expect: 1
WScript.Echo DateDiff("m", #1/31/2003#, #2/1/2003#)  ' expect: 1
WScript.Echo DateDiff("d", #1/1/2003#, #2/1/2003#)  ' expect: 31
WScript.Echo DateDiff("d", #2/1/2003#, #1/1/2003#)  ' expect: -31
WScript.Echo DateDiff("h", #1/1/2003 1:59:00 AM#, #1/1/2003 2:00:00 AM#)  ' expect: 1
WScript.Echo DateDiff("n", #1:00:00 AM#, #2:30:00 AM#)  ' expect: 90
WScript.Echo DateDiff("s", #1:00:00 AM#, #1:01:01 AM#)  ' expect: 61
WScript.Echo TypeName(DateDiff("d", #1/1/2003#, #2/1/2003#))  ' expect: Long
