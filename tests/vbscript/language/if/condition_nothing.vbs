Set o = Nothing
If o Then WScript.Echo "yes"  ' error: 91
