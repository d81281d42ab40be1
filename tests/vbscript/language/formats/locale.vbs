WScript.Echo GetLocale  ' expect: 1033
WScript.Echo SetLocale(1033)  ' expect: 1033
