Class Node
  Public Value, NextNode
End Class
Set a = New Node
Set a.NextNode = New Node
a.NextNode.Value = 5
Set a.NextNode.NextNode = New Node
a.NextNode.NextNode.Value = 6
WScript.Echo a.NextNode.Value & a.NextNode.NextNode.Value  ' expect: 56
