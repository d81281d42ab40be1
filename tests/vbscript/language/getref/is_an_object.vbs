Sub P
End Sub
Set f = GetRef("P")
WScript.Echo "" & IsObject(f)  ' expect: True
