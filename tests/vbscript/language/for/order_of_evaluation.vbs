Function Say(n)
  s = s & n & ";"
  Say = n
End Function
s = ""
For i = Say(1) To Say(3) Step Say(2)
Next
WScript.Echo s  ' expect: 1;3;2;
