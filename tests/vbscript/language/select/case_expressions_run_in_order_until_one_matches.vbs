Function Say(n)
  WScript.Echo "asked " & n  ' expect: asked 1 | asked 2
  Say = n
End Function
Select Case 2
  Case Say(1), Say(2), Say(3)
    WScript.Echo "hit"  ' expect: hit
End Select
