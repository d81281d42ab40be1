Dim i
For i = 1 To 2
  Dim kept
  kept = kept + 1
Next
WScript.Echo kept  ' expect: 2
