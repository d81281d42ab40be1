Function Fact(n)
  If n <= 1 Then Fact = 1 Else Fact = n * Fact(n - 1)
End Function
WScript.Echo Fact(10)  ' expect: 3628800
