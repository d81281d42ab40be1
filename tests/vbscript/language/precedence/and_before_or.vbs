WScript.Echo "" & (True Or False And False)  ' expect: True
