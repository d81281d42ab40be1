WScript.Echo (CDbl(3) = CByte(4)) & (CDbl(3) <> CByte(4)) & (CDbl(3) < CByte(4)) & (CDbl(3) > CByte(4)) & (CDbl(3) <= CByte(4)) & (CDbl(3) >= CByte(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CDbl(3) = CInt(4)) & (CDbl(3) <> CInt(4)) & (CDbl(3) < CInt(4)) & (CDbl(3) > CInt(4)) & (CDbl(3) <= CInt(4)) & (CDbl(3) >= CInt(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CDbl(3) = CLng(4)) & (CDbl(3) <> CLng(4)) & (CDbl(3) < CLng(4)) & (CDbl(3) > CLng(4)) & (CDbl(3) <= CLng(4)) & (CDbl(3) >= CLng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CDbl(3) = CSng(4)) & (CDbl(3) <> CSng(4)) & (CDbl(3) < CSng(4)) & (CDbl(3) > CSng(4)) & (CDbl(3) <= CSng(4)) & (CDbl(3) >= CSng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CDbl(3) = CDbl(4)) & (CDbl(3) <> CDbl(4)) & (CDbl(3) < CDbl(4)) & (CDbl(3) > CDbl(4)) & (CDbl(3) <= CDbl(4)) & (CDbl(3) >= CDbl(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CDbl(3) = CCur(4)) & (CDbl(3) <> CCur(4)) & (CDbl(3) < CCur(4)) & (CDbl(3) > CCur(4)) & (CDbl(3) <= CCur(4)) & (CDbl(3) >= CCur(4))  ' expect: FalseTrueTrueFalseTrueFalse
