If True Then
End Sub  ' compile error: 1012
