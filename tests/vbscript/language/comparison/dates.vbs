WScript.Echo (#1/1/2003# < #1/2/2003#) & (#1/1/2003# = 37622)  ' expect: TrueTrue
