Class C
  Private a()
  Private Sub Class_Initialize
    ReDim a(1)
  End Sub
  Public Sub Grow
    ReDim Preserve a(UBound(a) + 1)
  End Sub
  Public Function Top
    Top = UBound(a)
  End Function
End Class
Set o = New C
o.Grow
WScript.Echo o.Top  ' expect: 2
