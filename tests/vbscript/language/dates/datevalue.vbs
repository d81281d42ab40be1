WScript.Echo DateValue("1/2/2003")  ' expect: 1/2/2003
WScript.Echo DateValue("1/2/2003 3:04 PM")  ' expect: 1/2/2003
