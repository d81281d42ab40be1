Set a = Nothing
WScript.Echo TypeName(a) & (a Is Nothing) & IsObject(a)  ' expect: NothingTrueTrue
