a = "xy"
a = a & a
WScript.Echo a  ' expect: xyxy
