WScript.Echo TypeName(-CCur(7)) & " " & (-CCur(7))  ' expect: Currency -7
