Select Case 9
  Case 1
    WScript.Echo "one"
End Select
WScript.Echo "after"  ' expect: after
