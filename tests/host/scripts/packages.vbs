' needs event handlers, and component services
Option Explicit
' A host that puts the servers of the example suite into packages and deploys them.
Dim suite, b, settings, p, created
suite = WScript.Arguments(1) & "\suite"
Set settings = CreateObject("Hearthmake.Settings")
settings.BeginEdit
settings.VBExe = WScript.Arguments(2)
settings.ApplyEdit

Set b = WScript.CreateObject("Hearthmake.Build", "Build_")
b.BeginEdit
b.Name = "Suite"
b.ApplyEdit
b.CreateBuildFromPath suite, False
b.Projects.SetCompileOrder
WScript.Echo b.Projects.Build(False)
' expect: Shutting down COM+ Applications
' expect: -1
WScript.Echo b.COMApplications.Count & " " & b.MTSPackages.Count & " " & b.COMApplications.CreateAllPackages ' expect: 0 0 False

Set created = b.COMApplications.Create
created.BeginEdit
created.Name = "Order desk"
created.Description = "Orders and their rules"
created.ImpersonationLevel = 2
created.ApplyEdit
For Each p In b.Projects
  If p.Name = "OdOrders" Or p.Name = "OdRules" Then
    p.BeginEdit
    p.MtsPackageId = created.Id
    p.ApplyEdit
  End If
Next

WScript.Echo b.COMApplications.CreateAllPackages
' expect: Adding COM+ Application: Order desk
' expect: Adding component OdRules to COM+ Application Order desk
' expect: Adding component OdOrders to COM+ Application Order desk
' expect: -1
WScript.Echo b.COMApplications.CreateAllPackages
' expect: Refreshing  COM+ Application Order desk
' expect: -1
created.BeginEdit
created.ExportPath = suite & "\Order desk.export"
created.CreateNew = True
created.ApplyEdit
WScript.Echo b.COMApplications.CreateAllPackages
' expect: Removing COM+ Application: Order desk
' expect: Adding COM+ Application: Order desk
' expect: Adding component OdRules to COM+ Application Order desk
' expect: Adding component OdOrders to COM+ Application Order desk
' expect: Exporting COM+ Application: Order desk
' expect: -1
Dim text
text = CreateObject("Scripting.FileSystemObject").OpenTextFile(created.ExportPath).ReadAll
WScript.Echo (InStr(text, "OdRules.OrderRules") > 0) & " " & (InStr(text, """ImpersonationLevel"": 2") > 0) ' expect: True True
b.Kill

' The same rows are MTS packages to whoever asks for those.
Dim again
Set again = WScript.CreateObject("Hearthmake.Build", "Build_")
again.Load 1
WScript.Echo again.MTSPackages(1).Name & " " & again.MTSPackages(1).Authorization ' expect: Order desk False
WScript.Echo again.MTSPackages.CreateAllPackages
' expect: Adding component OdOrders to Package Order desk
' expect: Adding component OdRules to Package Order desk
' expect: Exporting package: Order desk
' expect: -1
again.MTSPackages(1).Skip = True
WScript.Echo again.MTSPackages.CreateAllPackages ' expect: 0
again.MTSPackages(1).RemovePackage ' expect: Removing Package: Order desk
On Error Resume Next
again.MTSPackages(1).BeginEdit
again.MTSPackages(1).Delete
again.MTSPackages(1).ApplyEdit
WScript.Echo Err.Number & " " & Err.Source & " " & Err.Description ' expect: 45 MTSPackage.Save This package is used by one or many projects and can't be deleted!
again.Kill

Sub Build_MTSEvent(info, cancel)
  WScript.Echo info
End Sub
