WScript.Echo True & False  ' expect: TrueFalse
