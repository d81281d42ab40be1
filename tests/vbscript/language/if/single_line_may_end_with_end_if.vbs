If True Then WScript.Echo "closed" End If  ' expect: closed
