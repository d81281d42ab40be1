WScript.Echo (CLng(3) = CByte(4)) & (CLng(3) <> CByte(4)) & (CLng(3) < CByte(4)) & (CLng(3) > CByte(4)) & (CLng(3) <= CByte(4)) & (CLng(3) >= CByte(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CLng(3) = CInt(4)) & (CLng(3) <> CInt(4)) & (CLng(3) < CInt(4)) & (CLng(3) > CInt(4)) & (CLng(3) <= CInt(4)) & (CLng(3) >= CInt(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CLng(3) = CLng(4)) & (CLng(3) <> CLng(4)) & (CLng(3) < CLng(4)) & (CLng(3) > CLng(4)) & (CLng(3) <= CLng(4)) & (CLng(3) >= CLng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CLng(3) = CSng(4)) & (CLng(3) <> CSng(4)) & (CLng(3) < CSng(4)) & (CLng(3) > CSng(4)) & (CLng(3) <= CSng(4)) & (CLng(3) >= CSng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CLng(3) = CDbl(4)) & (CLng(3) <> CDbl(4)) & (CLng(3) < CDbl(4)) & (CLng(3) > CDbl(4)) & (CLng(3) <= CDbl(4)) & (CLng(3) >= CDbl(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CLng(3) = CCur(4)) & (CLng(3) <> CCur(4)) & (CLng(3) < CCur(4)) & (CLng(3) > CCur(4)) & (CLng(3) <= CCur(4)) & (CLng(3) >= CCur(4))  ' expect: FalseTrueTrueFalseTrueFalse
