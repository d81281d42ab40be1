Function Show(v)
  If IsNull(v) Then Show = "null" Else Show = TypeName(v) & " " & v
End Function
WScript.Echo Show(True Imp True)  ' expect: Boolean True
WScript.Echo Show(True Imp False)  ' expect: Boolean False
WScript.Echo Show(True Imp Null)  ' expect: null
WScript.Echo Show(False Imp True)  ' expect: Boolean True
WScript.Echo Show(False Imp False)  ' expect: Boolean True
WScript.Echo Show(False Imp Null)  ' expect: Boolean True
WScript.Echo Show(Null Imp True)  ' expect: Boolean True
WScript.Echo Show(Null Imp False)  ' expect: null
WScript.Echo Show(Null Imp Null)  ' expect: null
