Dim a(4)
a(2) = "two"
a(4) = "four"
WScript.Echo a(2.5) & a(3.5) & a(1.5)  ' expect: twofourtwo
