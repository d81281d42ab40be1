Sub P(a, b)
  WScript.Echo a & b  ' expect: 12 | 34
End Sub
Call P(1, 2)
P 3, 4
