WScript.Echo (CCur(3) = CByte(4)) & (CCur(3) <> CByte(4)) & (CCur(3) < CByte(4)) & (CCur(3) > CByte(4)) & (CCur(3) <= CByte(4)) & (CCur(3) >= CByte(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CCur(3) = CInt(4)) & (CCur(3) <> CInt(4)) & (CCur(3) < CInt(4)) & (CCur(3) > CInt(4)) & (CCur(3) <= CInt(4)) & (CCur(3) >= CInt(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CCur(3) = CLng(4)) & (CCur(3) <> CLng(4)) & (CCur(3) < CLng(4)) & (CCur(3) > CLng(4)) & (CCur(3) <= CLng(4)) & (CCur(3) >= CLng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CCur(3) = CSng(4)) & (CCur(3) <> CSng(4)) & (CCur(3) < CSng(4)) & (CCur(3) > CSng(4)) & (CCur(3) <= CSng(4)) & (CCur(3) >= CSng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CCur(3) = CDbl(4)) & (CCur(3) <> CDbl(4)) & (CCur(3) < CDbl(4)) & (CCur(3) > CDbl(4)) & (CCur(3) <= CDbl(4)) & (CCur(3) >= CDbl(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CCur(3) = CCur(4)) & (CCur(3) <> CCur(4)) & (CCur(3) < CCur(4)) & (CCur(3) > CCur(4)) & (CCur(3) <= CCur(4)) & (CCur(3) >= CCur(4))  ' expect: FalseTrueTrueFalseTrueFalse
