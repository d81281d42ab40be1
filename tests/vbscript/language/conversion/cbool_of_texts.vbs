WScript.Echo "" & CBool("True")  ' expect: True
WScript.Echo "" & CBool("false")  ' expect: False
WScript.Echo "" & CBool("0")  ' expect: False
WScript.Echo "" & CBool("2.5")  ' expect: True
