WScript.Echo TypeName(Err) & IsObject(Err)  ' expect: ObjectTrue
