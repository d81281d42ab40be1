Attribute VB_Name = "modImport"
Option Explicit

' OdImport.exe <branch folder> <price file>: takes over a supplier's list, one "article;price" a line.
Public Sub Main()
    Dim strFolder As String
    Dim strFile As String
    Dim lngBlank As Long

    lngBlank = InStr(Command$, " ")
    If lngBlank = 0 Then
        MsgBox "OdImport <branch folder> <price file>", vbInformation, App.Title
    Else
        strFolder = Left$(Command$, lngBlank - 1)
        strFile = Mid$(Command$, lngBlank + 1)
        ImportPrices strFolder, strFile
    End If
End Sub

Private Sub ImportPrices(ByVal strFolder As String, ByVal strFile As String)
    Dim objDatabase As OdData.Database
    Dim objPrices As OdPricing.PriceList
    Dim objText As OdCommon.TextTools
    Dim intFile As Integer
    Dim strLine As String

    Set objDatabase = New OdData.Database
    Set objPrices = New OdPricing.PriceList
    Set objText = New OdCommon.TextTools
    objDatabase.OpenFolder strFolder
    objPrices.Attach objDatabase
    intFile = FreeFile
    Open strFile For Input As #intFile
    Do While Not EOF(intFile)
        Line Input #intFile, strLine
        If Not objText.IsBlank(strLine) Then
            objPrices.UnitPrice(objText.Field(strLine, 0)) = Val(objText.Field(strLine, 1))
        End If
    Loop
    Close #intFile
    objDatabase.SaveAll
End Sub
