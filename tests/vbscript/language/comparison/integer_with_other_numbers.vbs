WScript.Echo (CInt(3) = CByte(4)) & (CInt(3) <> CByte(4)) & (CInt(3) < CByte(4)) & (CInt(3) > CByte(4)) & (CInt(3) <= CByte(4)) & (CInt(3) >= CByte(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CInt(3) = CInt(4)) & (CInt(3) <> CInt(4)) & (CInt(3) < CInt(4)) & (CInt(3) > CInt(4)) & (CInt(3) <= CInt(4)) & (CInt(3) >= CInt(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CInt(3) = CLng(4)) & (CInt(3) <> CLng(4)) & (CInt(3) < CLng(4)) & (CInt(3) > CLng(4)) & (CInt(3) <= CLng(4)) & (CInt(3) >= CLng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CInt(3) = CSng(4)) & (CInt(3) <> CSng(4)) & (CInt(3) < CSng(4)) & (CInt(3) > CSng(4)) & (CInt(3) <= CSng(4)) & (CInt(3) >= CSng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CInt(3) = CDbl(4)) & (CInt(3) <> CDbl(4)) & (CInt(3) < CDbl(4)) & (CInt(3) > CDbl(4)) & (CInt(3) <= CDbl(4)) & (CInt(3) >= CDbl(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CInt(3) = CCur(4)) & (CInt(3) <> CCur(4)) & (CInt(3) < CCur(4)) & (CInt(3) > CCur(4)) & (CInt(3) <= CCur(4)) & (CInt(3) >= CCur(4))  ' expect: FalseTrueTrueFalseTrueFalse
