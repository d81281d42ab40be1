If True Then WScript.Echo "yes"  ' expect: yes
