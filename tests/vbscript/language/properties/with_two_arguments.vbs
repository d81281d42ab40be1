Class C
  Private m
  Public Property Let Cell(r, c, v)
    m = r & "," & c & "=" & v
  End Property
  Public Property Get Cell(r, c)
    Cell = m
  End Property
End Class
Set o = New C
o.Cell(1, 2) = 3
WScript.Echo o.Cell(0, 0)  ' expect: 1,2=3
