WScript.Echo TypeName(Split("1,2", ",")(0))  ' expect: String
WScript.Echo TypeName(Split("1,2", ","))  ' expect: Variant()
