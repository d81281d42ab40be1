On Error Resume Next
Err.Raise 77
WScript.Echo "" & (Err = 77)  ' expect: True
