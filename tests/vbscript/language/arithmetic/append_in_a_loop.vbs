s = ""
For i = 1 To 1000
  s = s & "ab"
Next
WScript.Echo Len(s)  ' expect: 2000
