Class MyThing
End Class
Set o = New mything
WScript.Echo TypeName(o)  ' expect: MyThing
