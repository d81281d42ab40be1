WScript.Echo "" & (False Eqv True Xor True)  ' expect: True
