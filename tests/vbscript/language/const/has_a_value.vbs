Const N = 5, S = "text"
WScript.Echo N & S  ' expect: 5text
