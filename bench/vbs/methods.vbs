' Method calls and properties of a class.
Option Explicit
Dim rounds, savings, i
rounds = 80
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Class Account
  Private m_balance
  Private m_moves
  Private Sub Class_Initialize
    m_balance = 0
    m_moves = 0
  End Sub
  Public Property Get Balance
    Balance = m_balance
  End Property
  Public Property Let Balance(value)
    m_balance = value
    m_moves = m_moves + 1
  End Property
  Public Property Get Moves
    Moves = m_moves
  End Property
  Public Sub Deposit(amount)
    m_balance = m_balance + amount
    m_moves = m_moves + 1
  End Sub
  Public Function CanPay(amount)
    CanPay = m_balance >= amount
  End Function
End Class

Sub Work(account, n)
  Dim i
  For i = 1 To n
    account.Deposit i Mod 10
    If account.CanPay(1000) Then account.Balance = account.Balance - 1000
  Next
End Sub

Set savings = New Account
For i = 1 To rounds
  Work savings, 100000
Next
WScript.Echo savings.Balance & " " & savings.Moves
