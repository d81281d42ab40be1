WScript.Echo #April 5, 2003#  ' expect: 4/5/2003
WScript.Echo #5-Apr-2003#     ' expect: 4/5/2003
