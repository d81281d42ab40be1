WScript.Echo (Empty = 0) & (Empty = "") & (Empty = False)  ' expect: TrueTrueTrue
WScript.Echo (Empty < 1) & (Empty < "a")  ' expect: TrueTrue
WScript.Echo "" & (Empty = Empty)  ' expect: True
