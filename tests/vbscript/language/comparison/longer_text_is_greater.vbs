WScript.Echo "" & ("ab" > "a")  ' expect: True
