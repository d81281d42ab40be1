Attribute VB_Name = "modCommon"
Option Explicit

Public Const APP_KEY As String = "OrderDesk"
Public Const DATE_MASK As String = "yyyy-mm-dd"

' A date as every part of the suite writes it, whatever the regional settings are.
Public Function IsoDate(ByVal dtmValue As Date) As String
    IsoDate = Format$(dtmValue, DATE_MASK)
End Function

Public Function LastError() As String
    LastError = CStr(Err.Number) & " " & Err.Description
End Function
