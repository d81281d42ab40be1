WScript.Echo ("a" < "b") & ("b" > "a") & ("a" <= "a") & ("a" >= "b") & ("a" <> "b") & ("a" = "a")  ' expect: TrueTrueTrueFalseTrueTrue
