s = "abc"
Mid(s, 1, 1) = "x"  ' error: 501
