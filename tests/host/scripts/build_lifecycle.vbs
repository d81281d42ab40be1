Option Explicit
Dim b, c, list, x
Set b = CreateObject("Hearthmake.Build")
WScript.Echo b.Id & " [" & b.Name & "] " & b.StartDllBaseAddress ' expect: 0 [] 0
b.BeginEdit
b.Name = "A name of more than thirty characters"
b.StartDllBaseAddress = -65536
b.ApplyEdit
WScript.Echo b.Id & " [" & b.Name & "]" ' expect: 1 [A name of more than thirty cha]
b.BeginEdit
b.Name = "Shop"
b.StartDllBaseAddress = 0
b.ApplyEdit
b.BeginEdit
b.Name = "Other"
b.CancelEdit
WScript.Echo b.Name ' expect: Shop
Set c = CreateObject("Hearthmake.Build")
c.Load 1
WScript.Echo c.Name & " " & c.StartDllBaseAddress & " " & VarType(c.Id) ' expect: Shop 0 3

On Error Resume Next
b.Name = "  "
WScript.Echo Err.Number & "|" & Err.Source & "|" & Err.Description ' expect: 45|Build.Name|Invalid name
Err.Clear
b.ApplyEdit
WScript.Echo Err.Number & "|" & Err.Source & "|" & Err.Description ' expect: 1004|Project.CancelEdit|Not in edit mode
Err.Clear
b.BeginEdit
b.BeginEdit
WScript.Echo Err.Number & "|" & Err.Source & "|" & Err.Description ' expect: 1004|Project.BeginEdit|Already in edit mode
b.CancelEdit
Err.Clear
c.Load 17
WScript.Echo Hex(Err.Number) & "|" & Err.Source & "|" & Err.Description ' expect: 80040010|Build.Load|Build not found!
Err.Clear
c.Nosuch
WScript.Echo Err.Number ' expect: 438
On Error GoTo 0

Set list = CreateObject("Hearthmake.Builds")
x = list.LoadAll()
WScript.Echo list.Count & " " & list.item(1).Name & " " & list("1").Id ' expect: 1 Shop 1
For Each x In list
  WScript.Echo x.Name ' expect: Shop
Next
b.BeginEdit
b.Delete
b.ApplyEdit
list.LoadAll
WScript.Echo list.Count ' expect: 0
