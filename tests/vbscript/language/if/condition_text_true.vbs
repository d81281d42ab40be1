If "True" Then WScript.Echo "yes"   ' expect: yes
If "fALSE" Then WScript.Echo "yes" Else WScript.Echo "no"  ' expect: no
