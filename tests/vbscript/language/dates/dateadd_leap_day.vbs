WScript.Echo DateAdd("yyyy", 1, #2/29/2004#)  ' expect: 2/28/2005
