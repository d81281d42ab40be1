x = FormatDateTime(#1/2/2003#, 9)  ' error: 5
