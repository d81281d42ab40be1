WScript.Echo Replace("banana", "a", "o", 3)  ' expect: nono
