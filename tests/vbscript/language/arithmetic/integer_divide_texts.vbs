x = "7" \ "2"
WScript.Echo TypeName(x) & x  ' expect: Long3
