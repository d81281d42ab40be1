WScript.Echo Eval("1 + 2 * 3")  ' expect: 7
