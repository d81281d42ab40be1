WScript.Echo &hFf  ' expect: 255
