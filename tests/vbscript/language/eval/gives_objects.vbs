Class C
  Public N
End Class
Set o = New C
Set p = Eval("o")
WScript.Echo "" & (p Is o)  ' expect: True
