WScript.Echo "[" & CStr(Empty) & "]"  ' expect: []
