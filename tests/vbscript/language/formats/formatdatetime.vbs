WScript.Echo FormatDateTime(#1/2/2003 3:04:05 PM#)  ' expect: 1/2/2003 3:04:05 PM
WScript.Echo FormatDateTime(#1/2/2003 3:04:05 PM#, vbGeneralDate)  ' expect: 1/2/2003 3:04:05 PM
WScript.Echo FormatDateTime(#1/2/2003 3:04:05 PM#, vbLongDate)  ' expect: Thursday, January 2, 2003
WScript.Echo FormatDateTime(#1/2/2003 3:04:05 PM#, vbShortDate)  ' expect: 1/2/2003
WScript.Echo FormatDateTime(#1/2/2003 3:04:05 PM#, vbLongTime)  ' expect: 3:04:05 PM
WScript.Echo FormatDateTime(#1/2/2003 3:04:05 PM#, vbShortTime)  ' expect: 15:04
