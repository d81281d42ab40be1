WScript.Echo "" & ("10" < "9")  ' expect: True
