WScript.Echo Replace( _
  "abc", _
  "b", _
  "x")
' expect line 1: axc
