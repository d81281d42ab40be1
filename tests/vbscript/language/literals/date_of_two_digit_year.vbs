WScript.Echo Year(#1/1/29#)  ' expect: 2029
WScript.Echo Year(#1/1/30#)  ' expect: 1930
