Dim a(4)
a("3") = "x"
WScript.Echo a(3)  ' expect: x
