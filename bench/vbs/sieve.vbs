' Primes below a million by the sieve of Eratosthenes.
Option Explicit
Dim rounds, i, count
rounds = 6
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function CountPrimes(limit)
  Dim isComposite(), i, j, found
  ReDim isComposite(limit)
  found = 0
  For i = 2 To limit
    If Not isComposite(i) Then
      found = found + 1
      For j = i + i To limit Step i
        isComposite(j) = True
      Next
    End If
  Next
  CountPrimes = found
End Function

count = 0
For i = 1 To rounds
  count = count + CountPrimes(1000000)
Next
WScript.Echo count
