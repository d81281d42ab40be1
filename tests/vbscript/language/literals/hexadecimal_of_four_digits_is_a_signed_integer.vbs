WScript.Echo &HFF    ' expect: 255
WScript.Echo &H7FFF  ' expect: 32767
WScript.Echo &H8000  ' expect: -32768
WScript.Echo &HFFFF  ' expect: -1
WScript.Echo TypeName(&HFFFF)  ' expect: Integer
