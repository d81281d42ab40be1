P
Sub P
  WScript.Echo "found"  ' expect: found
End Sub
