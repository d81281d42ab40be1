With Err
End If  ' compile error: 1029 @5
