Select Case Null
  Case Null
    WScript.Echo "null"
  Case Else
    WScript.Echo "else"  ' expect: else
End Select
