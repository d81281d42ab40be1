WScript.Echo "" & ("ab" = "a" & "b")  ' expect: True
