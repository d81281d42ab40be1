Stop
WScript.Echo "on"  ' expect: on
If True Then Stop: WScript.Echo "still"  ' expect: still
