Sub P
  WScript.Echo "called"  ' expect: called | called | called
End Sub
Call P
Call P()
P
