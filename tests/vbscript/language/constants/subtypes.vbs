WScript.Echo vbEmpty & vbNull & vbInteger & vbLong & vbSingle & vbDouble & vbCurrency & vbDate & vbString & vbObject  ' expect: 0123456789
WScript.Echo vbError & " " & vbBoolean & " " & vbVariant & " " & vbDataObject & " " & vbDecimal & " " & vbByte & " " & vbArray  ' expect: 10 11 12 13 14 17 8192
