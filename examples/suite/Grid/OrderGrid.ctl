VERSION 5.00
Begin VB.UserControl OrderGrid 
   ClientHeight    =   2400
   ClientLeft      =   0
   ClientTop       =   0
   ClientWidth     =   4800
   ScaleHeight     =   2400
   ScaleWidth      =   4800
   Begin VB.ListBox lstLines 
      BeginProperty Font 
         Name            =   "Courier New"
         Size            =   9
         Charset         =   0
         Weight          =   400
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Height          =   2205
      Left            =   60
      TabIndex        =   0
      Top             =   60
      Width           =   4680
   End
End
Attribute VB_Name = "OrderGrid"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = True
Attribute VB_PredeclaredId = False
Attribute VB_Exposed = True
Option Explicit

Public Event LineChosen(ByVal lngIndex As Long)

Private m_objText As OdCommon.TextTools
Private m_lngColumnWidth As Long

Private Sub UserControl_Initialize()
    Set m_objText = New OdCommon.TextTools
    m_lngColumnWidth = 12
End Sub

Private Sub UserControl_Resize()
    If UserControl.ScaleWidth > 120 And UserControl.ScaleHeight > 120 Then
        lstLines.Move 60, 60, UserControl.ScaleWidth - 120, UserControl.ScaleHeight - 120
    End If
End Sub

Private Sub UserControl_ReadProperties(PropBag As PropertyBag)
    m_lngColumnWidth = PropBag.ReadProperty("ColumnWidth", 12)
End Sub

Private Sub UserControl_WriteProperties(PropBag As PropertyBag)
    PropBag.WriteProperty "ColumnWidth", m_lngColumnWidth, 12
End Sub

Private Sub lstLines_DblClick()
    RaiseEvent LineChosen(lstLines.ListIndex)
End Sub

Public Property Get ColumnWidth() As Long
    ColumnWidth = m_lngColumnWidth
End Property

Public Property Let ColumnWidth(ByVal lngColumnWidth As Long)
    m_lngColumnWidth = lngColumnWidth
    PropertyChanged "ColumnWidth"
End Property

Public Sub Clear()
    lstLines.Clear
End Sub

Public Sub AddLine(ParamArray varColumns() As Variant)
    Dim lngColumn As Long
    Dim strLine As String

    For lngColumn = LBound(varColumns) To UBound(varColumns)
        strLine = strLine & m_objText.PadRight(CStr(varColumns(lngColumn)), m_lngColumnWidth)
    Next lngColumn
    lstLines.AddItem strLine
End Sub
