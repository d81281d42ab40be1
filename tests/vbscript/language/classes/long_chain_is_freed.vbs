Class Node
  Public NextNode
End Class
Set first = Nothing
For i = 1 To 100000
  Set n = New Node
  Set n.NextNode = first
  Set first = n
Next
Set n = Nothing
Set first = Nothing
WScript.Echo "freed"  ' expect: freed
