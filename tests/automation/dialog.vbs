' A host in VBScript and its cashier: whole movements at the open dialog, with handlers that change, fail, discard and show
' again. The connection text is of the demonstration shop.
Dim drawer, mode, following

Sub On_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  WScript.Echo "SalvaPagamento", idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso
  If mode = "change" Then
    Valuta = "CHF"
    tipoIncasso = 9
  ElseIf mode = "fail" Then
    Err.Raise 513, "Till", "The drawer is locked"
  ElseIf mode = "again" Then
    mode = ""
    drawer.DiscardForm
    WScript.Echo "shown again '" & drawer.Show(0) & "'"
  End If
End Sub

Sub On_ApriCassetto()
  WScript.Echo "ApriCassetto"
End Sub

' The cashier: a withdrawal in cash of 2, 25 ...
Sub Enter(digits, nextStep)
  WScript.Touch 0.263, 0.19
  For i = 1 To Len(digits)
    If Mid(digits, i, 1) = "2" Then
      WScript.Touch 0.115, 0.555
    Else
      WScript.Touch 0.115, 0.467
    End If
  Next
  WScript.Touch 0.561, 0.195
  following = nextStep
  WScript.When 1, "Confirm"
End Sub

Sub Confirm()
  WScript.Touch 0.813, 0.945
  WScript.When 1, following
End Sub

Sub Notice(what)
  WScript.Echo what & ": a notice in", WScript.Color(0.234, 0.945)
End Sub

Sub Change()
  mode = "change"
  WScript.Touch 0.065, 0.76 ' euro, which the handler makes francs
  Enter "25", "Changed"
End Sub

Sub Changed()
  Notice "changed"
  mode = "fail"
  Enter "2", "Failed"
End Sub

Sub Failed()
  Notice "failed"
  mode = ""
  following = "Confirmed" ' everything that was entered is there
  Confirm
End Sub

Sub Confirmed()
  Notice "confirmed"
  mode = "again"
  Enter "5", "ShownAgain"
End Sub

Sub ShownAgain()
  Enter "52", "Leave"
End Sub

Sub Leave()
  WScript.Press 27
  WScript.When 0, "Gone"
End Sub

Sub Gone()
  WScript.Echo "left"
End Sub

Set drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "On_")
drawer.InizializzaByConnString WScript.Arguments(0)
drawer.idCassa = 1
WScript.When 1, "Change"
WScript.Echo "shown '" & drawer.Show & "'"
