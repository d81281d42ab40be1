Sub P(a, b)
  WScript.Echo TypeName(a) & b  ' expect: Error2
End Sub
P , 2
