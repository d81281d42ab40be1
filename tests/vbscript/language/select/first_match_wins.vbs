Select Case 2
  Case 1
    WScript.Echo "one"
  Case 2, 3
    WScript.Echo "two or three"  ' expect: two or three
  Case 2
    WScript.Echo "again"
End Select
