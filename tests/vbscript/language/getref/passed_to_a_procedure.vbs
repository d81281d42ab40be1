Function Twice(n)
  Twice = n * 2
End Function
Function Apply(f, n)
  Apply = f(n)
End Function
WScript.Echo Apply(GetRef("Twice"), 4)  ' expect: 8
