Class Keywords
  Public Property Get [Next]
    [Next] = 7
  End Property
End Class
Set k = New Keywords
WScript.Echo k.Next  ' expect: 7
