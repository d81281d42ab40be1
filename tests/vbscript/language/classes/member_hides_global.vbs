N = "global"
Class C
  Public N
  Function F
    N = "member"
    F = N
  End Function
End Class
Set o = New C
WScript.Echo o.F & N  ' expect: memberglobal
