WScript.Echo TypeName(Not True) & (Not True)  ' expect: BooleanFalse
