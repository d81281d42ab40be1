Class C
End Class
Set a = New C
Set b = New C
Set d = a
WScript.Echo (a Is a) & (a Is b) & (a Is d) & (a Is Nothing)  ' expect: TrueFalseTrueFalse
