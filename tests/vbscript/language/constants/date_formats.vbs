WScript.Echo vbGeneralDate & vbLongDate & vbShortDate & vbLongTime & vbShortTime  ' expect: 01234
