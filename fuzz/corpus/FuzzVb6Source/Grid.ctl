VERSION 5.00
Object = "{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0"; "MSCOMCTL.OCX"
Begin VB.UserControl Grid
   ClientHeight    =   3600
   BeginProperty Font
      Name            =   "MS Sans Serif"
   EndProperty
   Begin VB.Label lblTitle
      Caption         =   "Begin"
   End
End
Attribute VB_Name = "Grid"
Attribute VB_Creatable = True
Attribute VB_Exposed = True
Public Event Click()
Public Sub Clear(): End Sub
