Function Twice(n)
  Twice = n * 2
End Function
WScript.Echo Eval("Twice(3)")  ' expect: 6
