WScript.Echo #1/1/2003# + 0.5  ' expect: 1/1/2003 12:00:00 PM
