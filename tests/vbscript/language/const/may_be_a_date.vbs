Const D = #1/2/2003#
WScript.Echo TypeName(D)  ' expect: Date
