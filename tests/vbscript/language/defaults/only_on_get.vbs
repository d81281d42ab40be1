Class C
  Public Default Property Let A(v)  ' compile error: 1058
  End Property
End Class
