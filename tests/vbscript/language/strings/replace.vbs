WScript.Echo Replace("banana", "a", "o")  ' expect: bonono
WScript.Echo Replace("banana", "an", "")  ' expect: ba
WScript.Echo Replace("banana", "x", "y")  ' expect: banana
WScript.Echo Replace("banana", "", "y")  ' expect: banana
WScript.Echo Replace("aaa", "a", "aa")  ' expect: aaaaaa
