Class C
  Public Default Property Get P
    P = 1 + Me
  End Property
End Class
Set o = New C
On Error Resume Next
x = 1 + o
WScript.Echo Err.Number & " " & Err.Description  ' expect: 28 Out of stack space
