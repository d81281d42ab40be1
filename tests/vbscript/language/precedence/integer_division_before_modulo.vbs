WScript.Echo 20 Mod 9 \ 2  ' expect: 0
