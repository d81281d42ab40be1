s = "100"
n = CLng(1000)
WScript.Echo "" & (s > n)  ' expect: True
