WScript.Echo Replace("banana", "a", "o", 1, 2)  ' expect: bonona
WScript.Echo Replace("banana", "a", "o", 1, 0)  ' expect: banana
