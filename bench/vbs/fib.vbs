' Calls: the Fibonacci numbers by plain recursion.
Option Explicit
Dim rounds, i, sum
rounds = 6
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function Fib(ByVal n)
  If n < 2 Then
    Fib = n
  Else
    Fib = Fib(n - 1) + Fib(n - 2)
  End If
End Function

sum = 0
For i = 1 To rounds
  sum = sum + Fib(26 + i)
Next
WScript.Echo sum
