WScript.Echo Unescape("a%20b")  ' expect: a b
WScript.Echo AscW(Unescape("%u20AC"))  ' expect: 8364
WScript.Echo Unescape("100%")  ' expect: 100%
