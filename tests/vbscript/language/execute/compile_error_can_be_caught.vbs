On Error Resume Next
Execute "x = = 1"
WScript.Echo "" & (Err.Number >= 1002 And Err.Number <= 1058)  ' expect: True
