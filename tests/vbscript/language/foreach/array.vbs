For Each x In Array("a", "b", "c")
  s = s & x
Next
WScript.Echo s  ' expect: abc
