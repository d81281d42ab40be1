VERSION 5.00
Begin VB.Form frmDesk 
   Caption         =   "Order Desk - Café Lindgren"
   ClientHeight    =   4200
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   7200
   LinkTopic       =   "Form1"
   ScaleHeight     =   4200
   ScaleWidth      =   7200
   StartUpPosition =   3  'Windows Default
   Begin VB.CommandButton cmdAdd 
      Caption         =   "&Add"
      Height          =   375
      Left            =   5880
      TabIndex        =   2
      Top             =   120
      Width           =   1215
   End
   Begin VB.TextBox txtQuantity 
      Height          =   375
      Left            =   4560
      TabIndex        =   1
      Text            =   "1"
      Top             =   120
      Width           =   1215
   End
   Begin VB.TextBox txtArticle 
      Height          =   375
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   4335
   End
   Begin VB.Menu mnuFile 
      Caption         =   "&File"
      Begin VB.Menu mnuFilePrint 
         Caption         =   "&Print"
         Shortcut        =   ^P
      End
      Begin VB.Menu mnuFileExit 
         Caption         =   "E&xit"
      End
   End
End
Attribute VB_Name = "frmDesk"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

Private m_objServer As OdServer.OrderServer
Private m_objOrder As OdOrders.Order
Private m_objGrid As Object

Private Sub Form_Load()
    Set m_objServer = New OdServer.OrderServer
    ' Made at run time, so that the form does not pin the control's version.
    Set m_objGrid = Me.Controls.Add("OdGrid.OrderGrid", "grdLines")
    m_objGrid.Move 120, 600, 6975, 3480
    m_objGrid.Visible = True
    Set m_objOrder = m_objServer.Book.Take("Señora Nuñez", "Große Straße 7")
End Sub

Private Sub cmdAdd_Click()
    On Error GoTo Failed
    m_objServer.Book.AddLine m_objOrder, txtArticle.Text, CLng(Val(txtQuantity.Text))
    ShowLines
    Exit Sub
Failed:
    MsgBox Err.Description, vbExclamation, Me.Caption
End Sub

Private Sub ShowLines()
    Dim objLine As OdOrders.OrderLine

    m_objGrid.object.Clear
    For Each objLine In m_objOrder.Lines
        m_objGrid.object.AddLine objLine.Article, objLine.Quantity, objLine.Price
    Next objLine
End Sub

Private Sub mnuFilePrint_Click()
    m_objServer.PrintOrder m_objOrder.Number
End Sub

Private Sub mnuFileExit_Click()
    m_objServer.Book.Save
    Unload Me
End Sub
