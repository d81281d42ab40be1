a = Array(1)
a = 5
WScript.Echo a  ' expect: 5
