WScript.Echo UBound(Array()) & LBound(Array())  ' expect: -10
