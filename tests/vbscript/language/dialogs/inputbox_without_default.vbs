WScript.Echo "[" & InputBox("name?") & "]"  ' expect: []
