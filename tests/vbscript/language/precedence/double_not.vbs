WScript.Echo "" & (Not Not True)  ' expect: True
