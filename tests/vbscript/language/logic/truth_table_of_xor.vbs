Function Show(v)
  If IsNull(v) Then Show = "null" Else Show = TypeName(v) & " " & v
End Function
WScript.Echo Show(True Xor True)  ' expect: Boolean False
WScript.Echo Show(True Xor False)  ' expect: Boolean True
WScript.Echo Show(True Xor Null)  ' expect: null
WScript.Echo Show(False Xor True)  ' expect: Boolean True
WScript.Echo Show(False Xor False)  ' expect: Boolean False
WScript.Echo Show(False Xor Null)  ' expect: null
WScript.Echo Show(Null Xor True)  ' expect: null
WScript.Echo Show(Null Xor False)  ' expect: null
WScript.Echo Show(Null Xor Null)  ' expect: null
