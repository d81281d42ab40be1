WScript.Echo DateSerial(100, 1, 1)  ' expect: 1/1/100
WScript.Echo DateSerial(9999, 12, 31)  ' expect: 12/31/9999
