WScript.Echo InputBox("name?", "title", "Bob")  ' expect: Bob
