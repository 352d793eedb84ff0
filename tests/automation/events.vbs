' What sinks do inside an event: three are connected, the second one acts. Then the event comes once more, and
' everything is released.
Dim drawer, action, seen, kind, depth

Sub Act()
  depth = depth + 1
  Select Case action
    Case "disconnects itself"
      WScript.DisconnectObject drawer, "B_"
    Case "disconnects the earlier one"
      WScript.DisconnectObject drawer, "A_"
    Case "disconnects the later one"
      WScript.DisconnectObject drawer, "C_"
    Case "connects another"
      WScript.ConnectObject drawer, "D_"
    Case "discards"
      drawer.DiscardForm
    Case "shows again"
      drawer.DiscardForm
      drawer.Show 0
    Case "raises again"
      If depth = 1 Then Raise
    Case "releases"
      Set drawer = Nothing
    Case "fails"
      Err.Raise 513, "Till", "The drawer is locked"
    Case "fails bare"
      WScript.Fail "bare"
    Case "fails numbered"
      WScript.Fail "numbered"
    Case "fails deferred"
      WScript.Fail "deferred"
  End Select
  depth = depth - 1
End Sub

Sub Raise()
  Dim day, id, amount, currency_, note, place, activity, incoming
  Select Case kind
    Case "SalvaPagamento"
      currency_ = "EUR"
      id = 1
      amount = 2.5
      incoming = False
      drawer.SalvaPagamento id, amount, currency_, note, place, activity, incoming
      seen = seen & " " & id & " " & amount & " " & currency_ & " " & note & place & activity & " " & incoming
    Case "Stampa"
      day = "16"
      drawer.Stampa day
      seen = seen & " " & day
    Case "Anteprima"
      day = "17"
      drawer.Anteprima day
      seen = seen & " " & day
    Case "ApriCassetto"
      drawer.ApriCassetto
  End Select
End Sub

Sub A_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  seen = seen & "A" & Valuta
End Sub

Sub A_Stampa(DataOperazione)
  seen = seen & "A" & DataOperazione
End Sub

Sub A_Anteprima(DataOperazione)
  seen = seen & "A" & DataOperazione
End Sub

Sub A_ApriCassetto()
  seen = seen & "A"
End Sub

Sub B_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  seen = seen & "B" & Valuta
  If action = "writes" Then
    idpagamento = 7
    importo = importo * 2
    Valuta = "CHF"
    note = "n"
    cassetto = 3
    tipoIncasso = "9"
    isIncasso = 1
  End If
  Act
End Sub

Sub B_Stampa(DataOperazione)
  seen = seen & "B" & DataOperazione
  If action = "writes" Then DataOperazione = "18"
  Act
End Sub

Sub B_Anteprima(DataOperazione)
  seen = seen & "B" & DataOperazione
  If action = "writes" Then DataOperazione = "18"
  Act
End Sub

Sub B_ApriCassetto()
  seen = seen & "B"
  Act
End Sub

Sub C_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  seen = seen & "C" & Valuta
End Sub

Sub C_Stampa(DataOperazione)
  seen = seen & "C" & DataOperazione
End Sub

Sub C_Anteprima(DataOperazione)
  seen = seen & "C" & DataOperazione
End Sub

Sub C_ApriCassetto()
  seen = seen & "C"
End Sub

Sub D_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  seen = seen & "D" & Valuta
End Sub

Sub D_Stampa(DataOperazione)
  seen = seen & "D" & DataOperazione
End Sub

Sub D_Anteprima(DataOperazione)
  seen = seen & "D" & DataOperazione
End Sub

Sub D_ApriCassetto()
  seen = seen & "D"
End Sub

Dim list, shown
list = Array("writes", "disconnects itself", "disconnects the earlier one", "disconnects the later one", _
  "connects another", "discards", "shows again", "raises again", "releases", "fails", "fails bare", _
  "fails numbered", "fails deferred")
For Each kind In Array("SalvaPagamento", "Stampa", "Anteprima", "ApriCassetto")
  For Each action In list
    Set drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "A_")
    WScript.ConnectObject drawer, "B_"
    WScript.ConnectObject drawer, "C_"
    If action = "discards" Or action = "shows again" Or action = "releases" Then drawer.Show 0
    seen = ""
    depth = 0
    On Error Resume Next
    Raise
    If Err.Number <> 0 Then
      seen = seen & " [" & Err.Number & " " & Err.Source & ": " & Err.Description & "]"
      Err.Clear
    End If
    seen = seen & ", " & WScript.Left
    shown = action
    action = ""
    If Not drawer Is Nothing Then
      seen = seen & ", then "
      Raise
      seen = seen & ", " & WScript.Left
      Set drawer = Nothing
    End If
    On Error Goto 0
    WScript.Echo kind, shown & ": " & seen & ", left " & WScript.Left
  Next
Next
