WScript.Echo Int("2.7")  ' expect: 2
WScript.Echo "" & IsNull(Int(Null))  ' expect: True
