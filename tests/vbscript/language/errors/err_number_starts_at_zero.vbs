WScript.Echo Err.Number & TypeName(Err.Number)  ' expect: 0Long
