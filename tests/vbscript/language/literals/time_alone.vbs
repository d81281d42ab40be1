WScript.Echo #3:04:05 PM#          ' expect: 3:04:05 PM
WScript.Echo CDbl(#12:00:00 PM#)   ' expect: 0.5
