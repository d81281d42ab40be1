a = "x"
b = a
a = a & "y"
WScript.Echo a & " " & b  ' expect: xy x
