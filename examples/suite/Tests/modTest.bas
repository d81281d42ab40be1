Attribute VB_Name = "modTest"
Option Explicit

Private m_lngFailed As Long
Private m_strReport As String

Public Sub Main()
    TestMoneyRoundsAwayFromZero
    TestQuantityLowersPrice
    TestOrderTakesFromStock
    If m_lngFailed = 0 Then m_strReport = m_strReport & "all passed"
    MsgBox m_strReport, vbInformation, App.Title
End Sub

Private Sub Expect(ByVal blnHolds As Boolean, ByVal strWhat As String)
    If blnHolds Then Exit Sub
    m_lngFailed = m_lngFailed + 1
    m_strReport = m_strReport & "FAILED: " & strWhat & vbCrLf
End Sub

Private Sub TestMoneyRoundsAwayFromZero()
    Dim objMoney As New OdCommon.Money

    objMoney.Amount = -0.125
    objMoney.RoundToCents
    Expect objMoney.Amount = -0.13, "half a cent goes away from zero"
End Sub

Private Sub TestQuantityLowersPrice()
    Dim objBook As OdOrders.OrderBook

    Set objBook = OpenTestBranch()
    objBook.Prices.UnitPrice("FILTER") = 2
    Expect objBook.Prices.LinePrice("FILTER", 99).Amount = 198, "99 pieces cost the full price"
    Expect objBook.Prices.LinePrice("FILTER", 100).Amount = 190, "100 pieces are 5 % cheaper"
End Sub

Private Sub TestOrderTakesFromStock()
    Dim objBook As OdOrders.OrderBook
    Dim objOrder As OdOrders.Order

    Set objBook = OpenTestBranch()
    objBook.Stock.Receive "ESPRESSO", 30
    Set objOrder = objBook.Take("Müller & Söhne", "Hafenstraße 1")
    objBook.AddLine objOrder, "ESPRESSO", 12
    Expect objBook.Stock.OnHand("ESPRESSO") = 18, "an order takes its goods out of the stock"
    Expect Len(objBook.Warnings) > 0, "18 left is below the low mark"
End Sub

Private Function OpenTestBranch() As OdOrders.OrderBook
    Set OpenTestBranch = New OdOrders.OrderBook
    On Error Resume Next
    Kill App.Path & "\testbranch\*.txt"
    On Error GoTo 0
    OpenTestBranch.OpenBranch App.Path & "\testbranch"
End Function
