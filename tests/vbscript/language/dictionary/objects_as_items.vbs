Set d = CreateObject("Scripting.Dictionary")
Set d("r") = New RegExp
WScript.Echo TypeName(d("r"))  ' expect: IRegExp2
