WScript.Echo TypeName(CDbl(6) Eqv CInt(5)) & " " & (CDbl(6) Eqv CInt(5)) & " " & (CDbl(6) Imp CInt(5))  ' expect: Long -4 -3
WScript.Echo TypeName(CDbl(6) Eqv CLng(5)) & " " & (CDbl(6) Eqv CLng(5)) & " " & (CDbl(6) Imp CLng(5))  ' expect: Long -4 -3
WScript.Echo TypeName(CDbl(6) Eqv CSng(5)) & " " & (CDbl(6) Eqv CSng(5)) & " " & (CDbl(6) Imp CSng(5))  ' expect: Long -4 -3
WScript.Echo TypeName(CDbl(6) Eqv CDbl(5)) & " " & (CDbl(6) Eqv CDbl(5)) & " " & (CDbl(6) Imp CDbl(5))  ' expect: Long -4 -3
