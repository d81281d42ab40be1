If Then  ' compile error: 1023 @4
End If
