WScript.Echo "" & 1.10  ' expect: 1.1
WScript.Echo "" & 1E20  ' expect: 1E+20
WScript.Echo "" & 0.0001  ' expect: 0.0001
WScript.Echo "" & 0.00001  ' expect: 1E-05
WScript.Echo "" & 123456789012345  ' expect: 123456789012345
WScript.Echo "" & 1234567890123456  ' expect: 1.23456789012346E+15
WScript.Echo "" & -1.5E-10  ' expect: -1.5E-10
