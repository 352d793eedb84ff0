// The same from JScript, beside the host's own loop.
var mode, following, drawer = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "On_");

function On_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso) {
  WScript.Echo("SalvaPagamento", idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
  if (mode === "fail")
    throw new Error(513, "The drawer is locked");
  if (mode === "again") {
    mode = "";
    drawer.DiscardForm();
    WScript.Echo("shown again '" + drawer.Show(0) + "'");
  }
}

// The cashier: a deposit of 2 francs, by card.
function enter(next) {
  WScript.Touch(0.165, 0.76);
  WScript.Touch(0.263, 0.345);
  WScript.Touch(0.115, 0.555);
  WScript.Touch(0.485, 0.195);
  following = next;
  WScript.When(1, "confirm");
}

function confirm() {
  WScript.Touch(0.813, 0.945);
  WScript.When(1, following);
}

function fail() {
  mode = "fail";
  enter("failed");
}

function failed() {
  WScript.Echo("failed: a notice in", WScript.Color(0.234, 0.945));
  mode = "again";
  following = "shownAgain";
  confirm();
}

function shownAgain() {
  enter("leave");
}

function leave() {
  WScript.Press(27);
  WScript.When(0, "left");
}

function left() {
  WScript.Echo("left");
}

drawer.InizializzaByConnString(WScript.Arguments(0));
drawer.idCassa = 1;
WScript.When(1, "fail");
WScript.Echo("shown '" + drawer.Show(0) + "'");
