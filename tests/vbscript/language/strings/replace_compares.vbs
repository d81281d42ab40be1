WScript.Echo Replace("BANANA", "a", "o")  ' expect: BANANA
WScript.Echo Replace("BANANA", "a", "o", 1, -1, 1)  ' expect: BoNoNo
