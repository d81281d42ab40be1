WScript.Echo .5 + .25  ' expect: 0.75
