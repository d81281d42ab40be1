Set d = CreateObject("Scripting.Dictionary")
d("z") = 1
d("a") = 2
d("m") = 3
WScript.Echo Join(d.Keys, ",") & Join(d.Items, ",")  ' expect: z,a,m1,2,3
