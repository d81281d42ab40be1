If Null = Null Then WScript.Echo "equal" Else WScript.Echo "neither"  ' expect: neither
