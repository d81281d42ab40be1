With x
' compile error at end: 1014
