Function Show(v)
  If IsNull(v) Then Show = "null" Else Show = TypeName(v) & " " & v
End Function
WScript.Echo Show(True And True)  ' expect: Boolean True
WScript.Echo Show(True And False)  ' expect: Boolean False
WScript.Echo Show(True And Null)  ' expect: null
WScript.Echo Show(False And True)  ' expect: Boolean False
WScript.Echo Show(False And False)  ' expect: Boolean False
WScript.Echo Show(False And Null)  ' expect: Boolean False
WScript.Echo Show(Null And True)  ' expect: null
WScript.Echo Show(Null And False)  ' expect: Boolean False
WScript.Echo Show(Null And Null)  ' expect: null
