Attribute VB_Name = "modReports"
Option Explicit

' OdReports.exe <branch folder> <target file>
Public Sub Main()
    Dim varArguments As Variant
    Dim objBook As OdOrders.OrderBook
    Dim objWriter As OdPrint.PageWriter
    Dim objReport As StockReport

    varArguments = Split(Command$, " ")
    If UBound(varArguments) <> 1 Then
        MsgBox "OdReports <branch folder> <target file>", vbInformation, App.Title
        Exit Sub
    End If
    Set objBook = New OdOrders.OrderBook
    objBook.OpenBranch varArguments(0)
    Set objReport = New StockReport
    objReport.Attach objBook.Stock, Array("ESPRESSO", "FILTER", "KAFFEE-GRÜN")
    Set objWriter = New OdPrint.PageWriter
    objWriter.PrintDocument objReport, varArguments(1)
End Sub
