If Then  ' compile error: 1023
End If
