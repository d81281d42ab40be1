Function Len(s)
  Len = "mine " & s
End Function
WScript.Echo Len("x")  ' expect: mine x
