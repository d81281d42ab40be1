If False Then WScript.Echo "yes" Else WScript.Echo "no"  ' expect: no
