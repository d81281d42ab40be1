a = Array(1, 2)
For Each x In a
  For Each y In a
    s = s & x & y & " "
  Next
Next
WScript.Echo Trim(s)  ' expect: 11 12 21 22
