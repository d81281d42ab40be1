WScript.Echo CDate(-1.25)  ' expect: 12/29/1899 6:00:00 AM
WScript.Echo Hour(CDate(-1.25))  ' expect: 6
