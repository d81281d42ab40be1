WScript.Echo "a\n" & Len("\t")  ' expect: a\n2
