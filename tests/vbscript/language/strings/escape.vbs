WScript.Echo Escape("a b&c")  ' expect: a%20b%26c
WScript.Echo Escape(ChrW(252))  ' expect: %FC
WScript.Echo Escape(ChrW(8364))  ' expect: %u20AC
WScript.Echo Escape("a@*_+-./1")  ' expect: a@*_+-./1
