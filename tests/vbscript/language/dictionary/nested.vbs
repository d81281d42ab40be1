Set d = CreateObject("Scripting.Dictionary")
Set d("in") = CreateObject("Scripting.Dictionary")
d("in")("x") = 7
WScript.Echo d("in")("x")  ' expect: 7
