WScript.Echo DateSerial(99, 1, 1)  ' expect: 1/1/1999
WScript.Echo DateSerial(29, 1, 1)  ' expect: 1/1/2029
WScript.Echo DateSerial(30, 1, 1)  ' expect: 1/1/1930
