a = Array(1, 2, 3)
For Each x In a
  a(2) = 9
  s = s & x
Next
WScript.Echo Len(s)  ' expect: 3
