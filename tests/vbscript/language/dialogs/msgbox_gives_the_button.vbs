WScript.Echo MsgBox("hello")  ' expect: 1
