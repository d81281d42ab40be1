Property Get P  ' compile error: 1048
End Property
