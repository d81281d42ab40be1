WScript.Echo #12/31/1999 11:59:58 PM#  ' expect: 12/31/1999 11:59:58 PM
