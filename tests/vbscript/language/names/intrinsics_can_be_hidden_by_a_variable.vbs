Dim Left
Left = 3
WScript.Echo Left  ' expect: 3
