WScript.Echo TypeName(True) & " " & CInt(True)    ' expect: Boolean -1
WScript.Echo TypeName(False) & " " & CInt(False)  ' expect: Boolean 0
