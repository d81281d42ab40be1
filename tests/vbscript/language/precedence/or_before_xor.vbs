WScript.Echo "" & (True Xor True Or True)  ' expect: False
