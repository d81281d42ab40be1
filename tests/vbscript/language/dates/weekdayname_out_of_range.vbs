x = WeekdayName(8)  ' error: 5
