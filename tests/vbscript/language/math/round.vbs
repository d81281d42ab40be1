WScript.Echo Round(2.5) & Round(3.5) & Round(-2.5)  ' expect: 24-2
WScript.Echo Round(2.125, 2) & " " & Round(2.375, 2)  ' expect: 2.12 2.38
WScript.Echo Round(5)  ' expect: 5
WScript.Echo TypeName(Round(2.5))  ' expect: Double
