WScript.Echo TypeName(-CInt(7)) & " " & (-CInt(7))  ' expect: Integer -7
