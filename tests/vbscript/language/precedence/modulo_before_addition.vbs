WScript.Echo 1 + 5 Mod 3  ' expect: 3
