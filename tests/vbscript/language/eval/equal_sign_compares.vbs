x = 5
WScript.Echo "" & Eval("x = 5")  ' expect: True
WScript.Echo "" & Eval("x = 6")  ' expect: False
