Sub Say(t)
  WScript.Echo t  ' expect: hello
End Sub
Set s = GetRef("Say")
s "hello"
