a = Split("a--b--c", "--")
WScript.Echo a(0) & a(1) & a(2)  ' expect: abc
