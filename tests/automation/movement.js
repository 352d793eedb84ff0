// The same class from JScript, two objects at once, one without handlers.
function First_SalvaPagamento(idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso) {
  WScript.Echo("first", idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso);
}
var first = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man", "First_");
var second = WScript.CreateObject("Kova_Drawer_Man.cls_Kova_Drawer_Man");
first.InserimentoAutomatico = true;
first.SalvaPagamento(4, "3", "GBP", "", 1, 6, true);
second.SalvaPagamento(4, 3, "GBP", "", 1, 6, true);
WScript.Echo(first.InserimentoAutomatico, second.InserimentoAutomatico, first.Show(0) === "");
first.DiscardForm();
try {
  first.SalvaPagamento(4, 3);
} catch (error) {
  WScript.Echo("refused", (error.number & 0xFFFF));
}
