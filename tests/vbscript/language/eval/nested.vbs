WScript.Echo Eval("Eval(""1 + 1"") + 1")  ' expect: 3
