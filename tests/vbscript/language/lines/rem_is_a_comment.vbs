Rem x = 1 / 0
REM
WScript.Echo "after"  ' expect: after
