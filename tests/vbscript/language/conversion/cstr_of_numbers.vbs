WScript.Echo CStr(5)  ' expect: 5
WScript.Echo CStr(1.50)  ' expect: 1.5
WScript.Echo CStr(-0.5)  ' expect: -0.5
WScript.Echo CStr(1E15)  ' expect: 1E+15
WScript.Echo CStr(123456789.123)  ' expect: 123456789.123
