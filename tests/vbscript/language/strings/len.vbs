WScript.Echo Len("abc") & Len("") & Len(Empty)  ' expect: 300
WScript.Echo Len(12345)  ' expect: 5
WScript.Echo "" & IsNull(Len(Null))  ' expect: True
WScript.Echo TypeName(Len("a"))  ' expect: Long
