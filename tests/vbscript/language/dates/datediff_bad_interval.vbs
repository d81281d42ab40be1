x = DateDiff("x", #1/1/2003#, #1/2/2003#)  ' error: 5
