WScript.Echo "" & (Not False And False)  ' expect: False
