Class C
  Private m(5)
  Public Property Let Item(i, v)
    m(i) = v
  End Property
  Public Property Get Item(i)
    Item = m(i)
  End Property
End Class
Set o = New C
o.Item(3) = "x"
WScript.Echo o.Item(3)  ' expect: x
