Set d = CreateObject("Scripting.Dictionary")
With d
  .Add "a", 1
  .Item("b") = 2
  WScript.Echo .Count & .Item("b")  ' expect: 22
End With
