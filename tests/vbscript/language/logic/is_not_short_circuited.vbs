Function Say(v)
  WScript.Echo "asked"  ' expect: asked | asked
  Say = v
End Function
x = Say(False) And Say(True)
