WScript.Echo Rnd  ' expect: 0.7055475
WScript.Echo Rnd  ' expect: 0.533424
WScript.Echo Rnd  ' expect: 0.5795186
WScript.Echo Rnd  ' expect: 0.2895625
WScript.Echo TypeName(Rnd)  ' expect: Single
