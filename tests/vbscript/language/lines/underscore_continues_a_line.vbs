x = 1 + _
    2 + _
    3
WScript.Echo x  ' expect: 6
