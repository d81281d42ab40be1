WScript.Echo ("a" = "A") & ("Z" < "a")  ' expect: FalseTrue
