' a comment

Option Explicit
WScript.Echo "ok"  ' expect: ok
