i = 0
While i < 2
  j = 0
  While j < 2
    s = s & i & j & " "
    j = j + 1
  Wend
  i = i + 1
Wend
WScript.Echo Trim(s)  ' expect: 00 01 10 11
