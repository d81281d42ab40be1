Err.Raise 1000, "me", "went wrong"  ' error: 1000 went wrong
