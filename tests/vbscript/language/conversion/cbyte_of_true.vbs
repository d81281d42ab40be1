WScript.Echo CByte(True)  ' expect: 255
