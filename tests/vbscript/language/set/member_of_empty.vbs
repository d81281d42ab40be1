Dim a
a.X = 1  ' error: 424 Object required: 'a'
