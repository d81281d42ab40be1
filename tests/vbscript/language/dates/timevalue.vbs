WScript.Echo TimeValue("3:04:05 PM")  ' expect: 3:04:05 PM
WScript.Echo TimeValue("15:04")  ' expect: 3:04:00 PM
WScript.Echo TimeValue("1/2/2003 3:04 PM")  ' expect: 3:04:00 PM
