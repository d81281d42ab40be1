If "1" Then WScript.Echo "yes"  ' expect: yes
If "0" Then WScript.Echo "yes" Else WScript.Echo "no"  ' expect: no
