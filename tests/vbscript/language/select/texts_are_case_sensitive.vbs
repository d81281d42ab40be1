Select Case "B"
  Case "b": WScript.Echo "lower"
  Case Else: WScript.Echo "other"  ' expect: other
End Select
