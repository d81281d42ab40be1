WScript.Echo Exp(0) & " " & Exp(1)  ' expect: 1 2.71828182845905
WScript.Echo Log(1) & " " & Log(10)  ' expect: 0 2.30258509299405
