x = 1
Next  ' compile error: 1055
