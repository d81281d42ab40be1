WScript.Echo (1 >< 2) & (1 =< 2) & (2 => 1)  ' expect: TrueTrueTrue
