WScript.Echo TypeName(Empty + 1) & (Empty + 1)  ' expect: Integer1
WScript.Echo TypeName(Empty + Empty) & (Empty + Empty)  ' expect: Integer0
WScript.Echo TypeName(Empty + 1.5)  ' expect: Double
