WScript.Echo "say ""hi"""  ' expect: say "hi"
WScript.Echo Len("""")     ' expect: 1
