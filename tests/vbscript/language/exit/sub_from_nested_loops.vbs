Sub P
  For i = 1 To 3
    Do
      If i = 2 Then Exit Sub
      Exit Do
    Loop
    WScript.Echo i  ' expect: 1
  Next
End Sub
P
