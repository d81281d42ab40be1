WScript.Echo CStr(True) & CStr(False)  ' expect: TrueFalse
