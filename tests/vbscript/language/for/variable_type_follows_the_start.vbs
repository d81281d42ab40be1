For i = 1 To 2
Next
WScript.Echo TypeName(i)  ' expect: Integer
For i = 1.0 To 2
Next
WScript.Echo TypeName(i)  ' expect: Double
