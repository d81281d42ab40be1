Function Show(v)
  If IsNull(v) Then Show = "null" Else Show = TypeName(v) & " " & v
End Function
WScript.Echo Show(True Eqv True)  ' expect: Boolean True
WScript.Echo Show(True Eqv False)  ' expect: Boolean False
WScript.Echo Show(True Eqv Null)  ' expect: null
WScript.Echo Show(False Eqv True)  ' expect: Boolean False
WScript.Echo Show(False Eqv False)  ' expect: Boolean True
WScript.Echo Show(False Eqv Null)  ' expect: null
WScript.Echo Show(Null Eqv True)  ' expect: null
WScript.Echo Show(Null Eqv False)  ' expect: null
WScript.Echo Show(Null Eqv Null)  ' expect: null
