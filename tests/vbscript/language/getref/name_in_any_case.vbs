Function One
  One = 1
End Function
Set f = GetRef("ONE")
WScript.Echo f()  ' expect: 1
