WScript.Echo WeekdayName(1) & WeekdayName(7, True) & WeekdayName(1, False, vbMonday)  ' expect: SundaySatMonday
