WScript.Echo TimeSerial(15, 4, 5)  ' expect: 3:04:05 PM
WScript.Echo TimeSerial(12, 60, 0)  ' expect: 1:00:00 PM
WScript.Echo TimeSerial(12, 0, -1)  ' expect: 11:59:59 AM
WScript.Echo TimeSerial(0, 0, 0)  ' expect: 12:00:00 AM
