WScript.Echo CDate("31/12/2003")  ' expect: 12/31/2003
