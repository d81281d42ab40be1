Sub P()
  WScript.Echo TypeName(later) & later  ' expect: Integer5
End Sub
later = 5
P
