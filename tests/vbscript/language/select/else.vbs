Select Case 9
  Case 1 WScript.Echo "one"
  Case Else WScript.Echo "other"  ' expect: other
End Select
