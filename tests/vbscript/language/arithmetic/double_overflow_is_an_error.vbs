x = 1E308 * 10  ' error: 6 Overflow
