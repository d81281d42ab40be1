WScript.Echo +5  ' expect: 5
