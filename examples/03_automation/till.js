// A till in JScript, for Windows' own script host. Its argument is a connection text.
//
//   cscript //nologo till.js "Driver={ODBC Driver 18 for SQL Server};Server=10.0.0.5;Database=Shop;Uid=till;Pwd=secret"
var stored = "";

// Store the movement here; throw if you cannot, and the cashier keeps the entry and reads why. The language has no
// arguments by reference: what is written into one stays here.
function On_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso) {
  if (importo > 1000) {
    WScript.Echo("refused " + importo);
    throw new Error(513, "More than 1000 is the manager's");
  }
  stored += "\n" + (isIncasso ? "in" : "out") + " " + importo + " " + Valuta + ", payment " + idpagamento +
    ", drawer " + cassetto + ", activity " + tipoIncasso + ": " + note;
}

function On_Stampa(DataOperazione) {
  WScript.Echo("print " + DataOperazione);
}

function On_Anteprima(DataOperazione) {
  WScript.Echo("preview " + DataOperazione);
}

function On_ApriCassetto() {
  WScript.Echo("open the drawer");
}

var drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "On_");
drawer.InizializzaByConnString(WScript.Arguments(0));
drawer.idCassa = 1;
drawer.Show(); // returns when the dialog has been closed
WScript.Echo("stored:" + stored);
