Err.Description = "own"
WScript.Echo Err.Description  ' expect: own
