Randomize
For i = 1 To 1000
  r = Rnd
  If r < 0 Or r >= 1 Then bad = True
Next
WScript.Echo TypeName(bad)  ' expect: Empty
