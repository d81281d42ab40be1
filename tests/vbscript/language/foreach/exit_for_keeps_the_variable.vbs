For Each x In Array(1, 2, 3)
  If x = 2 Then Exit For
Next
WScript.Echo x  ' expect: 2
