Function F(a)
  F = Eval("a * 2")
End Function
WScript.Echo F(4)  ' expect: 8
