WScript.Echo Len(vbCrLf) & AscW(vbCr) & AscW(vbLf) & AscW(vbTab)  ' expect: 213109
WScript.Echo AscW(vbNullChar) & AscW(vbFormFeed) & AscW(vbVerticalTab) & Len(vbNullString)  ' expect: 012110
WScript.Echo Len(vbNewLine)  ' expect: 2
