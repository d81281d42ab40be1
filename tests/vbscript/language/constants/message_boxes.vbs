WScript.Echo vbOKOnly & vbOKCancel & vbAbortRetryIgnore & vbYesNoCancel & vbYesNo & vbRetryCancel  ' expect: 012345
WScript.Echo vbCritical & " " & vbQuestion & " " & vbExclamation & " " & vbInformation  ' expect: 16 32 48 64
WScript.Echo vbOK & vbCancel & vbAbort & vbRetry & vbIgnore & vbYes & vbNo  ' expect: 1234567
WScript.Echo vbDefaultButton1 & " " & vbDefaultButton2 & " " & vbDefaultButton3  ' expect: 0 256 512
WScript.Echo vbApplicationModal & " " & vbSystemModal  ' expect: 0 4096
