Class C
  Private N
  Public Function Read(other)
    Read = other.N
  End Function
End Class
Set a = New C
Set b = New C
On Error Resume Next
x = a.Read(b)
WScript.Echo Err.Number  ' expect: 438
