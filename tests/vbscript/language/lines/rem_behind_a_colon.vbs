x = 4 : Rem x = 5
WScript.Echo x  ' expect: 4
