WScript.Echo CStr(#1/2/2003#)  ' expect: 1/2/2003
WScript.Echo CStr(#1/2/2003 3:04:05 PM#)  ' expect: 1/2/2003 3:04:05 PM
WScript.Echo CStr(#3:04:05 AM#)  ' expect: 3:04:05 AM
