WScript.Echo "on " & #2/3/2004#  ' expect: on 2/3/2004
