Set d = CreateObject("Scripting.Dictionary")
d("a") = Array(1, 2)
x = d("a")
x(0) = 9
WScript.Echo d("a")(0)  ' expect: 1
