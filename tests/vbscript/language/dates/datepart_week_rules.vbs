WScript.Echo DatePart("ww", #1/1/2005#, vbMonday, vbFirstFourDays)  ' expect: 53
WScript.Echo DatePart("ww", #1/3/2005#, vbMonday, vbFirstFourDays)  ' expect: 1
