WScript.Echo DatePart("yyyy", #2/3/2004#) & DatePart("q", #5/3/2004#) & DatePart("m", #2/3/2004#) & DatePart("d", #2/3/2004#)  ' expect: 2004223
WScript.Echo DatePart("y", #12/31/2004#)  ' expect: 366
WScript.Echo DatePart("w", #1/1/2003#)  ' expect: 4
WScript.Echo DatePart("ww", #1/1/2003#) & " " & DatePart("ww", #1/5/2003#)  ' expect: 1 2
WScript.Echo DatePart("h", #3:04:05 PM#) & " " & DatePart("n", #3:04:05 PM#) & " " & DatePart("s", #3:04:05 PM#)  ' expect: 15 4 5
