Dim a(3, 3)
WScript.Echo a(1)  ' error: 9
