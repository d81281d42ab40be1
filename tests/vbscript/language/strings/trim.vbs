WScript.Echo "[" & Trim("  a b  ") & "]"  ' expect: [a b]
WScript.Echo "[" & LTrim("  a  ") & "]"  ' expect: [a  ]
WScript.Echo "[" & RTrim("  a  ") & "]"  ' expect: [  a]
WScript.Echo Len(Trim(vbTab & "a"))  ' expect: 2
WScript.Echo "" & IsNull(Trim(Null))  ' expect: True
