' Quicksort of pseudo-random numbers.
Option Explicit
Dim rounds, round, a, i, sum
rounds = 6
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Function Numbers(n)
  Dim a(), i, x
  ReDim a(n - 1)
  x = 12345
  For i = 0 To n - 1
    x = (x * 171 + 11213) Mod 530963
    a(i) = x
  Next
  Numbers = a
End Function

Sub QuickSort(a, low, high)
  Dim i, j, pivot, t
  i = low
  j = high
  pivot = a((low + high) \ 2)
  Do While i <= j
    Do While a(i) < pivot
      i = i + 1
    Loop
    Do While pivot < a(j)
      j = j - 1
    Loop
    If i <= j Then
      t = a(i)
      a(i) = a(j)
      a(j) = t
      i = i + 1
      j = j - 1
    End If
  Loop
  If low < j Then QuickSort a, low, j
  If i < high Then QuickSort a, i, high
End Sub

sum = 0
For round = 1 To rounds
  a = Numbers(200000)
  QuickSort a, 0, UBound(a)
  For i = 0 To UBound(a) Step 1000
    sum = (sum * 3 + a(i)) Mod 1000003
  Next
Next
WScript.Echo sum
