Set o = Nothing
WScript.Echo "" & (Not o Is Nothing)  ' expect: False
