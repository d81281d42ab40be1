Sub P : WScript.Echo "one" : End Sub  ' expect: one
P
