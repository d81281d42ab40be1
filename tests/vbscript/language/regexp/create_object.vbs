Set r = CreateObject("VBScript.RegExp")
r.Pattern = "x"
WScript.Echo "" & r.Test("axb")  ' expect: True
