WScript.Echo AscW("A")  ' expect: 65
WScript.Echo AscW(ChrW(8364))  ' expect: 8364
WScript.Echo AscW(ChrW(65535))  ' expect: -1
