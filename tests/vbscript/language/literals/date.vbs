WScript.Echo TypeName(#1/2/2003#)  ' expect: Date
WScript.Echo Year(#1/2/2003#) & "-" & Month(#1/2/2003#) & "-" & Day(#1/2/2003#)  ' expect: 2003-1-2
