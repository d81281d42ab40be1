WScript.Echo (1 = 1.0) & (CByte(5) = 5) & (True = -1)  ' expect: TrueTrueTrue
