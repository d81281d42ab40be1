WScript.Echo "&H10" * 1  ' expect: 16
