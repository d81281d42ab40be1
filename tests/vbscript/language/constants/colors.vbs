WScript.Echo vbBlack & " " & vbRed & " " & vbGreen & " " & vbYellow  ' expect: 0 255 65280 65535
WScript.Echo vbBlue & " " & vbMagenta & " " & vbCyan & " " & vbWhite  ' expect: 16711680 16711935 16776960 16777215
