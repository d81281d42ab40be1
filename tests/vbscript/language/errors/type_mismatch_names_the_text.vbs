x = 1 + "abc"  ' error: 13 Type mismatch: '[string: "abc"]'
