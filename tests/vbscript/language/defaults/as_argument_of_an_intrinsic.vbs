Class C
  Public Default Property Get Value
    Value = "abc"
  End Property
End Class
Set o = New C
WScript.Echo Len(o)    ' expect: 3
WScript.Echo UCase(o)  ' expect: ABC
