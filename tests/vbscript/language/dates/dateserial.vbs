WScript.Echo DateSerial(2003, 1, 2)  ' expect: 1/2/2003
WScript.Echo DateSerial(2003, 1, 32)  ' expect: 2/1/2003
WScript.Echo DateSerial(2003, 13, 1)  ' expect: 1/1/2004
WScript.Echo DateSerial(2003, 0, 1)  ' expect: 12/1/2002
WScript.Echo DateSerial(2003, 3, 0)  ' expect: 2/28/2003
WScript.Echo DateSerial(2004, 3, 0)  ' expect: 2/29/2004
WScript.Echo DateSerial(2003, 1 - 13, 1)  ' expect: 12/1/2001
