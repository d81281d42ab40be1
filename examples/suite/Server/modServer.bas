Attribute VB_Name = "modServer"
Option Explicit

Private m_objBook As OdOrders.OrderBook

Public Sub Main()
    If App.StartMode = vbSModeStandalone Then SharedBook
End Sub

Public Function SharedBook() As OdOrders.OrderBook
    If m_objBook Is Nothing Then
        Set m_objBook = New OdOrders.OrderBook
        m_objBook.OpenBranch App.Path & "\branch"
    End If
    Set SharedBook = m_objBook
End Function
