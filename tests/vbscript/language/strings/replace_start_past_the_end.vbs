WScript.Echo "[" & Replace("abc", "a", "b", 10) & "]"  ' expect: []
