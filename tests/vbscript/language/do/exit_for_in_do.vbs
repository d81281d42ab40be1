Do
  Exit For  ' compile error: 1039
Loop
