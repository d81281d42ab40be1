WScript.Echo CDate("1/2/2003")  ' expect: 1/2/2003
WScript.Echo CDate("January 2, 2003")  ' expect: 1/2/2003
WScript.Echo CDate("2003-01-02")  ' expect: 1/2/2003
WScript.Echo CDate("3:04 PM")  ' expect: 3:04:00 PM
WScript.Echo CDate("1/2/2003 3:04:05 PM")  ' expect: 1/2/2003 3:04:05 PM
