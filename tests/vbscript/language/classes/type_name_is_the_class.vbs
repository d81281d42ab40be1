Class Animal
End Class
WScript.Echo TypeName(New Animal)  ' expect: Animal
WScript.Echo VarType(New Animal)   ' expect: 9
