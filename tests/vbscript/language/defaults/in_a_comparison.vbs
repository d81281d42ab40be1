Class C
  Public Default Property Get Value
    Value = 3
  End Property
End Class
Set o = New C
WScript.Echo "" & (o = 3)  ' expect: True
