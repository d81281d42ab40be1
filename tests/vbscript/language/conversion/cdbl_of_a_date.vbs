WScript.Echo CDbl(#1/1/2003 12:00:00 PM#)  ' expect: 37622.5
