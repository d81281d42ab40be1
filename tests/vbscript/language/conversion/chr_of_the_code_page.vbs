WScript.Echo AscW(Chr(128))  ' expect: 8364
WScript.Echo Asc(ChrW(8364))  ' expect: 128
