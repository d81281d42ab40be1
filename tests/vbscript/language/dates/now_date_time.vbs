WScript.Echo TypeName(Now) & TypeName(Date) & TypeName(Time)  ' expect: DateDateDate
WScript.Echo "" & (Date = Int(Now))  ' expect: True
WScript.Echo "" & (Time < 1)  ' expect: True
