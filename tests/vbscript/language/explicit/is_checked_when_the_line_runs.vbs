Option Explicit
If False Then x = 1
WScript.Echo "fine"  ' expect: fine
