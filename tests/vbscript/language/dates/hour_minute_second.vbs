WScript.Echo Hour(#3:04:05 PM#) & " " & Minute(#3:04:05 PM#) & " " & Second(#3:04:05 PM#)  ' expect: 15 4 5
