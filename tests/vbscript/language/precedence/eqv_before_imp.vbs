WScript.Echo "" & (False Imp True Eqv False)  ' expect: True
