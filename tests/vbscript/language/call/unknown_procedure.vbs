Unknown 1  ' error: 13 Type mismatch: 'Unknown'
