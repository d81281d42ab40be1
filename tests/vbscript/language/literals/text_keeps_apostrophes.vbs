WScript.Echo "it's"  ' expect: it's
