Const N = 1
Sub Change(x)
  x = 2
End Sub
Change N
WScript.Echo N  ' expect: 1
