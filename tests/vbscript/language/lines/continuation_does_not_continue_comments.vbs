' a comment _
WScript.Echo "runs"  ' expect: runs
