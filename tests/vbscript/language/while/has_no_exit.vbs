While True
  Exit While  ' compile error: 1039
Wend
