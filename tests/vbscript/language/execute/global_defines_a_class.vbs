ExecuteGlobal "Class K : Public N : End Class"
Set o = Eval("New K")
o.N = 5
WScript.Echo o.N  ' expect: 5
