WScript.Echo (CSng(3) = CByte(4)) & (CSng(3) <> CByte(4)) & (CSng(3) < CByte(4)) & (CSng(3) > CByte(4)) & (CSng(3) <= CByte(4)) & (CSng(3) >= CByte(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CSng(3) = CInt(4)) & (CSng(3) <> CInt(4)) & (CSng(3) < CInt(4)) & (CSng(3) > CInt(4)) & (CSng(3) <= CInt(4)) & (CSng(3) >= CInt(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CSng(3) = CLng(4)) & (CSng(3) <> CLng(4)) & (CSng(3) < CLng(4)) & (CSng(3) > CLng(4)) & (CSng(3) <= CLng(4)) & (CSng(3) >= CLng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CSng(3) = CSng(4)) & (CSng(3) <> CSng(4)) & (CSng(3) < CSng(4)) & (CSng(3) > CSng(4)) & (CSng(3) <= CSng(4)) & (CSng(3) >= CSng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CSng(3) = CDbl(4)) & (CSng(3) <> CDbl(4)) & (CSng(3) < CDbl(4)) & (CSng(3) > CDbl(4)) & (CSng(3) <= CDbl(4)) & (CSng(3) >= CDbl(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CSng(3) = CCur(4)) & (CSng(3) <> CCur(4)) & (CSng(3) < CCur(4)) & (CSng(3) > CCur(4)) & (CSng(3) <= CCur(4)) & (CSng(3) >= CCur(4))  ' expect: FalseTrueTrueFalseTrueFalse
