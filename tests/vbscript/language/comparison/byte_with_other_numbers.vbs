WScript.Echo (CByte(3) = CByte(4)) & (CByte(3) <> CByte(4)) & (CByte(3) < CByte(4)) & (CByte(3) > CByte(4)) & (CByte(3) <= CByte(4)) & (CByte(3) >= CByte(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CByte(3) = CInt(4)) & (CByte(3) <> CInt(4)) & (CByte(3) < CInt(4)) & (CByte(3) > CInt(4)) & (CByte(3) <= CInt(4)) & (CByte(3) >= CInt(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CByte(3) = CLng(4)) & (CByte(3) <> CLng(4)) & (CByte(3) < CLng(4)) & (CByte(3) > CLng(4)) & (CByte(3) <= CLng(4)) & (CByte(3) >= CLng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CByte(3) = CSng(4)) & (CByte(3) <> CSng(4)) & (CByte(3) < CSng(4)) & (CByte(3) > CSng(4)) & (CByte(3) <= CSng(4)) & (CByte(3) >= CSng(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CByte(3) = CDbl(4)) & (CByte(3) <> CDbl(4)) & (CByte(3) < CDbl(4)) & (CByte(3) > CDbl(4)) & (CByte(3) <= CDbl(4)) & (CByte(3) >= CDbl(4))  ' expect: FalseTrueTrueFalseTrueFalse
WScript.Echo (CByte(3) = CCur(4)) & (CByte(3) <> CCur(4)) & (CByte(3) < CCur(4)) & (CByte(3) > CCur(4)) & (CByte(3) <= CCur(4)) & (CByte(3) >= CCur(4))  ' expect: FalseTrueTrueFalseTrueFalse
