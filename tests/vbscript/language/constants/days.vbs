WScript.Echo vbSunday & vbMonday & vbTuesday & vbWednesday & vbThursday & vbFriday & vbSaturday  ' expect: 1234567
WScript.Echo vbUseSystemDayOfWeek & vbFirstJan1 & vbFirstFourDays & vbFirstFullWeek  ' expect: 0123
