Class C
  Public Default Property Get Value
    Value = True
  End Property
End Class
Set o = New C
If o Then WScript.Echo "yes"  ' expect: yes
