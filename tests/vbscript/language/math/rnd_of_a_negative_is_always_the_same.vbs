WScript.Echo Rnd(-1)  ' expect: 0.224007
WScript.Echo Rnd(-1)  ' expect: 0.224007
