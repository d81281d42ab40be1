For Each x In Array(1, 2)
Next
WScript.Echo TypeName(x)  ' expect: Empty
