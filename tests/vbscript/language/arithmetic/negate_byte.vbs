WScript.Echo TypeName(-CByte(7)) & " " & (-CByte(7))  ' expect: Integer -7
