WScript.Echo (True < False) & (True = True)  ' expect: TrueTrue
