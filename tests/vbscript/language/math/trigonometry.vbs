WScript.Echo Sin(0) & Cos(0) & Tan(0) & Atn(0)  ' expect: 0100
WScript.Echo Atn(1) * 4  ' expect: 3.14159265358979
WScript.Echo Sin(1)  ' expect: 0.841470984807897
WScript.Echo Cos(1)  ' expect: 0.54030230586814
WScript.Echo Tan(1)  ' expect: 1.5574077246549
