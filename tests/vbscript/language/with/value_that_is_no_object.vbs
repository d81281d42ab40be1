With 5  ' error: 424
  .X = 1
End With
