Class C
  Public Property Let P(v)
    WScript.Echo "let"  ' expect: let
  End Property
  Public Property Set P(v)
    WScript.Echo "set"  ' expect: set
  End Property
End Class
Set o = New C
o.P = 1
Set o.P = o
