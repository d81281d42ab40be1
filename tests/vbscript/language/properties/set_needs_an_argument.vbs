Class C
  Public Property Set P()  ' compile error: 1054
  End Property
End Class
