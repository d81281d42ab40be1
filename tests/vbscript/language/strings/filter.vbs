a = Filter(Array("apple", "banana", "cherry"), "an")
WScript.Echo UBound(a) & a(0)  ' expect: 0banana
a = Filter(Array("apple", "banana", "cherry"), "an", False)
WScript.Echo UBound(a) & a(0) & a(1)  ' expect: 1applecherry
a = Filter(Array("apple"), "x")
WScript.Echo UBound(a)  ' expect: -1
a = Filter(Array("APPLE"), "ap", True, 1)
WScript.Echo UBound(a)  ' expect: 0
