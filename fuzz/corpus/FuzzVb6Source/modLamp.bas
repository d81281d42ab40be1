Attribute VB_Name = "modLamp"
Option Explicit
Public Const kLevel& = &HFF
Type Pair: a As Long: b As String * 20: End Type
Sub Main()
10 If True Then Exit Sub Else: Rem "nothing
End Sub
