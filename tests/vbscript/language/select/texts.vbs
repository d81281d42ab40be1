Select Case "b"
  Case "a": WScript.Echo "a"
  Case "b": WScript.Echo "b"  ' expect: b
End Select
