Option Explicit
Dim name, o
' expect: Build Build
' expect: Builds Builds
' expect: Project Project
' expect: Settings Settings
' expect: Enums Enums
' expect: IReportItem IReportItem
For Each name In Array("Build", "Builds", "Project", "Settings", "Enums", "IReportItem")
  Set o = CreateObject("Hearthmake." & name)
  WScript.Echo name & " " & TypeName(o)
Next
On Error Resume Next
' expect: Projects 429
' expect: Reference 429
' expect: References 429
' expect: Scripts 429
' expect: SSProject 429
' expect: SSProjects 429
' expect: MTSPackages 429
' expect: COMApplications 429
' expect: Nothing 429
For Each name In Array("Projects", "Reference", "References", "Scripts", "SSProject", "SSProjects", "MTSPackages", "COMApplications", "Nothing")
  Err.Clear
  Set o = CreateObject("Hearthmake." & name)
  WScript.Echo name & " " & Err.Number
Next
Err.Clear
Set o = CreateObject("hearthMAKE.build")
WScript.Echo Err.Number & " " & TypeName(o) ' expect: 0 Build
Set o = CreateObject("Hearthmake.IReportItem")
WScript.Echo "[" & o.Name & o.Details & "]" ' expect: []
