Dim [my name], [1+1]
[my name] = 4
[1+1] = 5
WScript.Echo [my name] + [1+1]  ' expect: 9
