Attribute VB_Name = "modRules"
Option Explicit

Public Const MAX_QUANTITY As Long = 5000
