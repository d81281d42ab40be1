Class C
  Public Default Property Get Value
    Value = "v"
  End Property
End Class
Set o = New C
WScript.Echo "<" & o & ">"  ' expect: <v>
