Function Add(a, b)
  Add = a + b
End Function
Set f = GetRef("Add")
WScript.Echo f(1, 2)  ' expect: 3
