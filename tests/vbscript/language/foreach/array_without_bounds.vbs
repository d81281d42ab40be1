Dim a()
For Each x In a  ' error: 92
Next
