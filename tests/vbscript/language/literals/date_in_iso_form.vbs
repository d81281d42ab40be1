WScript.Echo #2003-04-05#  ' expect: 4/5/2003
