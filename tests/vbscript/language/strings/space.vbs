WScript.Echo "[" & Space(3) & "]"  ' expect: [   ]
WScript.Echo Len(Space(0))  ' expect: 0
