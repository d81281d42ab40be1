WScript.Echo "a" & Empty & "b"  ' expect: ab
