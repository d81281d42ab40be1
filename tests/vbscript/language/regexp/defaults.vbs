Set r = New RegExp
WScript.Echo r.Pattern & r.Global & r.IgnoreCase & r.Multiline  ' expect: FalseFalseFalse
WScript.Echo TypeName(r)  ' expect: IRegExp2
