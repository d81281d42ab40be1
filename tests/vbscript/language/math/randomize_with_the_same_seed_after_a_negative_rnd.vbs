Rnd -1
Randomize 5
a = Rnd
Rnd -1
Randomize 5
WScript.Echo "" & (Rnd = a)  ' expect: True
