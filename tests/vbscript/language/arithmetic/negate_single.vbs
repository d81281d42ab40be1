WScript.Echo TypeName(-CSng(7)) & " " & (-CSng(7))  ' expect: Single -7
