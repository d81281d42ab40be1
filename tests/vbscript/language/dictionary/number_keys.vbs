Set d = CreateObject("Scripting.Dictionary")
d(1) = "integer"
d(1.0) = "double"
d(CLng(1)) = "long"
d("1") = "text"
WScript.Echo d.Count & d(1)  ' expect: 2long
