WScript.Echo MonthName(2) & MonthName(12, True)  ' expect: FebruaryDec
