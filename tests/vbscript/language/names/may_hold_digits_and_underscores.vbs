a_1 = 5
WScript.Echo A_1  ' expect: 5
