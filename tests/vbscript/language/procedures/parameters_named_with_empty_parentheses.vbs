Sub P(a())
  WScript.Echo a(1)  ' expect: 2
End Sub
P Array(1, 2)
