x = 4 ' x = 5
WScript.Echo x  ' expect: 4
