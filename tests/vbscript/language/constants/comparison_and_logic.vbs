WScript.Echo vbBinaryCompare & vbTextCompare  ' expect: 01
WScript.Echo vbTrue & vbFalse & vbUseDefault  ' expect: -10-2
