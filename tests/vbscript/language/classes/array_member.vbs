Class C
  Private a(2)
  Public Sub Put(i, v)
    a(i) = v
  End Sub
  Public Function At(i)
    At = a(i)
  End Function
End Class
Set o = New C
o.Put 2, "x"
WScript.Echo o.At(2)  ' expect: x
