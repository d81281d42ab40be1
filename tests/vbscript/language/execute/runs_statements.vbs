Execute "x = 1 : y = 2"
WScript.Echo x & y  ' expect: 12
