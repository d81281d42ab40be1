Public Sub A
  WScript.Echo "a"  ' expect: a
End Sub
Private Function B
  B = "b"
End Function
A
WScript.Echo B  ' expect: b
