Function IsEven(n)
  If n = 0 Then IsEven = True Else IsEven = IsOdd(n - 1)
End Function
Function IsOdd(n)
  If n = 0 Then IsOdd = False Else IsOdd = IsEven(n - 1)
End Function
WScript.Echo "" & IsEven(10)  ' expect: True
