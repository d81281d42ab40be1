WScript.Echo CDate(0)  ' expect: 12:00:00 AM
WScript.Echo CDate(1)  ' expect: 12/31/1899
WScript.Echo CDate(2.5)  ' expect: 1/1/1900 12:00:00 PM
WScript.Echo CDate(-1)  ' expect: 12/29/1899
