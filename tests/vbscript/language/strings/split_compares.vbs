a = Split("axbXc", "x", -1, 1)
WScript.Echo UBound(a)  ' expect: 2
