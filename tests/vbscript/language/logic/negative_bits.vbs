WScript.Echo (-1 And 255) & " " & (-256 Or 255)  ' expect: 255 -1
