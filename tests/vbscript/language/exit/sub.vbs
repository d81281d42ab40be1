Sub P
  WScript.Echo "before"  ' expect: before
  Exit Sub
  WScript.Echo "never"
End Sub
P
