For Each x In 5  ' error: 451
Next
