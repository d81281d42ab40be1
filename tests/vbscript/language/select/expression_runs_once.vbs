Function F()
  n = n + 1
  calls = calls + 1
  F = 3
End Function
calls = 0
Select Case F()
  Case 1
  Case 2
  Case 3
    WScript.Echo calls  ' expect: 1
End Select
