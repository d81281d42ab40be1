Const N = -5
WScript.Echo N  ' expect: -5
