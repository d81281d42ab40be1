a = Rnd
WScript.Echo "" & (Rnd(0) = a)  ' expect: True
