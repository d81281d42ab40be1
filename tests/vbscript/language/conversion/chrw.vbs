WScript.Echo AscW(ChrW(955))  ' expect: 955
WScript.Echo Len(ChrW(-1))  ' expect: 1
