On Error Resume Next
x = 1 / 0 : WScript.Echo "next"  ' expect: next
