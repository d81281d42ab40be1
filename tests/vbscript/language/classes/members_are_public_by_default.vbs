Class C
  Dim V
  Sub S
    V = V & "s"
  End Sub
  Function F
    F = V & "f"
  End Function
End Class
Set o = New C
o.V = "v"
o.S
WScript.Echo o.F  ' expect: vsf
