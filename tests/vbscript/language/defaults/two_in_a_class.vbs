Class C
  Public Default Property Get A
  End Property
  Public Default Property Get B  ' compile error: 1052
  End Property
End Class
