x = MonthName(13)  ' error: 5
