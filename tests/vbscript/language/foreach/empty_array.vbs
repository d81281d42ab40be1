For Each x In Array()
  WScript.Echo "never"
Next
WScript.Echo "done"  ' expect: done
