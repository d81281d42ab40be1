Execute ""
WScript.Echo "ok"  ' expect: ok
