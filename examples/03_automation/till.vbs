' A till in VBScript, for Windows' own script host. Its argument is a connection text.
'
'   cscript //nologo till.vbs "Driver={ODBC Driver 18 for SQL Server};Server=10.0.0.5;Database=Shop;Uid=till;Pwd=secret"
Option Explicit
Dim drawer, stored

' Store the movement here; raise an error if you cannot, and the cashier keeps the entry and reads why. What is written
' into an argument reaches the component.
Sub On_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso)
  Dim direction
  If importo > 1000 Then
    WScript.Echo "refused " & importo
    Err.Raise vbObjectError + 513, "Till", "More than 1000 is the manager's"
  End If
  direction = "out"
  If isIncasso Then direction = "in"
  stored = stored & vbLf & direction & " " & importo & " " & Valuta & ", payment " & idpagamento & _
    ", drawer " & cassetto & ", activity " & tipoIncasso & ": " & note
End Sub

Sub On_Stampa(DataOperazione)
  WScript.Echo "print " & DataOperazione
End Sub

Sub On_Anteprima(DataOperazione)
  WScript.Echo "preview " & DataOperazione
End Sub

Sub On_ApriCassetto()
  WScript.Echo "open the drawer"
End Sub

Set drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "On_")
drawer.InizializzaByConnString WScript.Arguments(0)
drawer.idCassa = 1
drawer.Show ' returns when the dialog has been closed
WScript.Echo "stored:" & stored
