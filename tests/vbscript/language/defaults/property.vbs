Class C
  Public Default Property Get Value
    Value = 42
  End Property
End Class
Set o = New C
WScript.Echo o + 1  ' expect: 43
x = o
WScript.Echo x  ' expect: 42
