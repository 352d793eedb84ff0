' A host in VBScript: options, conversions, errors, and handlers that change, fail, discard and show again.
Dim drawer, mode

Sub On_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  WScript.Echo "SalvaPagamento", idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso
  If mode = "change" Then
    Valuta = "CHF"
    tipoIncasso = 9
    isIncasso = True
  ElseIf mode = "fail" Then
    Err.Raise 513, "Till", "The drawer is locked"
  ElseIf mode = "again" Then
    drawer.DiscardForm
    WScript.Echo "shown again '" & drawer.Show(0) & "'"
  ElseIf mode = "release" Then
    Set drawer = Nothing
  End If
End Sub

Sub On_Stampa(DataOperazione)
  WScript.Echo "Stampa", DataOperazione
  DataOperazione = "17/11/2026"
End Sub

Sub Told(what)
  WScript.Echo what & ":", Err.Number, Err.Description
  Err.Clear
End Sub

Set drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "On_")
WScript.Echo "defaults", drawer.idCassa, drawer.ValutaAziendale, drawer.ChiusuraAutomatica
drawer.idCassa = "7"
drawer.IDUTENTE = 2.5
drawer.ChiusuraAutomatica = 1
drawer.ValutaAziendale = 12
WScript.Echo "set", drawer.idCassa, drawer.idUtente, drawer.ChiusuraAutomatica, drawer.ValutaAziendale

asked = "16/11/2026"
drawer.Stampa asked
WScript.Echo "came back", asked
drawer.Stampa "16/11/2026"
drawer.Anteprima asked
drawer.ApriCassetto

mode = "change"
currency_ = "€"
activity = 2
incoming = False
drawer.SalvaPagamento 1, 12.5, currency_, "note Ω", 3, activity, incoming
WScript.Echo "came back", currency_, activity, incoming

On Error Resume Next
mode = "fail"
drawer.SalvaPagamento 1, 12.5, "€", "", 0, 2, False
Told "handler"
drawer.idCassa = "x"
Told "text"
drawer.idCassa = 3000000000
Told "range"
drawer.Stampa
Told "few"
drawer.Stampa "a", "b"
Told "many"
WScript.Echo drawer.ActiveColorMetroStyle
Told "write only"
drawer.Missing
Told "unknown"
drawer.Inizializza 5
Told "no connection"
On Error GoTo 0

WScript.Echo "shown '" & drawer.Show(0) & "'"
mode = "again"
drawer.SalvaPagamento 1, 1, "€", "", 0, 2, False
mode = "release"
drawer.SalvaPagamento 1, 2, "€", "", 0, 2, False
WScript.Echo "released", drawer Is Nothing
