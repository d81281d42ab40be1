x = "5" / "2"
WScript.Echo TypeName(x) & x  ' expect: Double2.5
