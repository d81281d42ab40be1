While Null
  WScript.Echo "never"
Wend
WScript.Echo "done"  ' expect: done
