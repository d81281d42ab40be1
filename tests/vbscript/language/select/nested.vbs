Select Case 1
  Case 1
    Select Case "x"
      Case "x"
        WScript.Echo "inner"  ' expect: inner
    End Select
    WScript.Echo "outer"  ' expect: outer
End Select
