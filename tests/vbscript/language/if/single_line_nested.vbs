If True Then If False Then WScript.Echo "a" Else WScript.Echo "b"  ' expect: b
