Dim a
a = Array(1, 2)
For Each x In a
  x = 9
Next
WScript.Echo a(0) & a(1)  ' expect: 12
