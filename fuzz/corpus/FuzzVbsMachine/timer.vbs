WScript.Echo TypeName(Timer)  ' expect: Single
WScript.Echo "" & (Timer >= 0 And Timer < 86400)  ' expect: True
