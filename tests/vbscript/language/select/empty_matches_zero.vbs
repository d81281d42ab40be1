Select Case Empty
  Case 0
    WScript.Echo "zero"  ' expect: zero
End Select
