WScript.Echo Join(Array("a", "b", "c"))  ' expect: a b c
WScript.Echo Join(Array("a", "b"), "")  ' expect: ab
WScript.Echo Join(Array(1, 2.5, True), ",")  ' expect: 1,2.5,True
WScript.Echo "[" & Join(Array()) & "]"  ' expect: []
WScript.Echo Join(Array("x"), "-")  ' expect: x
