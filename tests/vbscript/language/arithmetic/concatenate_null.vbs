WScript.Echo "a" & Null & "b"  ' expect: ab
WScript.Echo IsNull(Null & Null) & "."  ' expect: True.
