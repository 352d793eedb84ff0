' Ends in some way while the dialog is open, a handler connected and the component held.
Dim drawer, other

Sub On_ApriCassetto()
  WScript.End ""
End Sub

Set other = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man")
Set drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "On_")
drawer.Show 0
WScript.Echo "open " & WScript.Left
Select Case WScript.Arguments(0)
  Case "event"
    drawer.ApriCassetto
  Case "release"
    Set drawer = Nothing
    WScript.Echo "released " & WScript.Left
    Set other = Nothing
    WScript.Echo "released " & WScript.Left
  Case "elsewhere released"
    WScript.Keep drawer
    Set drawer = Nothing
    WScript.ReleaseElsewhere
    WScript.Echo "released " & WScript.Left & other.idCassa
  Case "exit", "at once", "apartment"
    WScript.End WScript.Arguments(0)
End Select
