Function Show(v)
  If IsNull(v) Then Show = "null" Else Show = TypeName(v) & " " & v
End Function
WScript.Echo Show(True Or True)  ' expect: Boolean True
WScript.Echo Show(True Or False)  ' expect: Boolean True
WScript.Echo Show(True Or Null)  ' expect: Boolean True
WScript.Echo Show(False Or True)  ' expect: Boolean True
WScript.Echo Show(False Or False)  ' expect: Boolean False
WScript.Echo Show(False Or Null)  ' expect: null
WScript.Echo Show(Null Or True)  ' expect: Boolean True
WScript.Echo Show(Null Or False)  ' expect: null
WScript.Echo Show(Null Or Null)  ' expect: null
