x = 5
x.Y = 1  ' error: 424 Object required: 'x'
