Set d = CreateObject("Scripting.Dictionary")
For i = 1 To 5000
  d("k" & i) = i
Next
For i = 1 To 5000 Step 2
  d.Remove "k" & i
Next
WScript.Echo d.Count & " " & d("k2500")  ' expect: 2500 2500
