#include "drawer_dialog/drawer_controls.h"

namespace kova {
namespace {

using namespace std::chrono_literals;

const Font LargeButton{"Tahoma", 12, true};
const Font MainButton{"Tahoma", 12, true}; // the one that sends a movement stands out
const Font ActionButton{"Tahoma", 10, false};
const Font Display{"Tahoma", 18, false};
const Font Note{"Tahoma", 12, false};

PushButton drawerButton(GroupFrame& frame, int number) {
    return {{&frame, "cmdCassetto", {120, 240 + 600 * (number - 1), 1815, 585}, number},
            std::to_string(number),
            LargeButton};
}

} // namespace

// The layout table: name, left, top, width, height in twips relative to the parent, Italian caption.
DrawerControls::DrawerControls(EventLoop& loop)
    : window("frm_Drawer_Management", "Gestione cassetto", {0, 0, 15195, 8955}),
      tabs({&window, "TabControl", {0, 15, 15135, 8880}}),
      TabControlPage1(tabs, "TabControlPage1", {0, 600, 15135, 8280}, "Gestione cassetto"),
      TabControlPage2(tabs, "TabControlPage2", {0, 600, 15135, 8280}, "Movimenti"),

      Label4({&TabControlPage1, "Label4", {135, 105, 1365, 240}}, "Importo digitato"),
      txtVisore({&TabControlPage1, "txtVisore", {1080, 360, 2280, 585}}, TextBox::Lines::Single, Display),
      CMD_CaricaMoneta({&TabControlPage1, "CMD_CaricaMoneta", {120, 360, 945, 585}}, "Conta Monete"),
      Virtual_KeyPAD({&TabControlPage1, "Virtual_KeyPAD", {120, 1080, 3255, 4455}}),
      Label2({&TabControlPage1, "Label2", {3480, 105, 1995, 240}}, "Tipo pagamento"),
      Pulsantiera_Pagamenti({&TabControlPage1, "Pulsantiera_Pagamenti", {3480, 360, 2055, 4215}}),
      lblTipoMovimento({&TabControlPage1, "lblTipoMovimento", {5640, 120, 3660, 240}}, "Tipo movimento"),
      Pulsantiera_Attivita({&TabControlPage1, "Pulsantiera_Attivita", {5640, 360, 9255, 1575}}),
      lblCaptionVersamenti({&TabControlPage1, "lblCaptionVersamenti", {9720, 0, 4635, 240}}, "Versamento"),
      Pulsantiera_Pagamenti_Versamenti(
          {&TabControlPage1, "Pulsantiera_Pagamenti_Versamenti", {5640, 360, 2055, 7095}}),
      frameCassetti({&TabControlPage1, "frameCassetti", {3480, 4680, 2055, 2775}}, "Numero cassetto"),
      cmdCassetto{drawerButton(frameCassetti, 1), drawerButton(frameCassetti, 2),
                  drawerButton(frameCassetti, 3), drawerButton(frameCassetti, 4)},
      frame_valuta({&TabControlPage1, "frame_valuta", {120, 5520, 3255, 1935}}, "Valuta"),
      Pulsantiera_Valuta({&frame_valuta, "Pulsantiera_Valuta", {120, 240, 3015, 1575}}),
      lblNote({&TabControlPage1, "lblNote", {5640, 2040, 3255, 240}}, "Note"),
      txtNote({&TabControlPage1, "txtNote", {5625, 2280, 9255, 1410}}, TextBox::Lines::Multiple, Note),
      Virtual_Keyboard({&TabControlPage1, "Virtual_Keyboard", {5535, 3720, 9600, 3735}}),
      cmdNascondiTastiera({&TabControlPage1, "cmdNascondiTastiera", {5640, 7560, 3975, 585}},
                          "Nascondi tastiera", ActionButton),
      cmdRecuperaFondoCassaPrecedente(
          {&TabControlPage1, "cmdRecuperaFondoCassaPrecedente", {120, 7560, 3255, 585}},
          "Recupera Fondo Cassa", ActionButton),
      cmdConferma({&TabControlPage1, "cmdConferma", {11520, 7560, 1695, 585}}, "Conferma", MainButton),
      cmdAnnulla({&TabControlPage1, "cmdAnnulla", {13320, 7560, 1575, 585}}, "Chiudi", ActionButton),

      grd_mov_giornata({&TabControlPage2, "grd_mov_giornata", {120, 120, 15015, 6975}}),
      Label5({&TabControlPage2, "Label5", {120, 7200, 1335, 240}}, "Data movimenti"),
      comboData({&TabControlPage2, "comboData", {120, 7440, 3135, 555}}),
      cmdCaricaMovimenti({&TabControlPage2, "cmdCaricaMovimenti", {3360, 7440, 1695, 570}}, "Carica",
                         ActionButton),
      cmdAnteprima({&TabControlPage2, "cmdAnteprima", {9840, 7440, 1695, 585}}, "Anteprima di stampa",
                   ActionButton),
      cmd_print({&TabControlPage2, "cmd_print", {11640, 7440, 1695, 585}}, "Stampa", ActionButton),
      PushButton1({&TabControlPage2, "PushButton1", {13440, 7440, 1695, 585}}, "Chiudi", ActionButton),

      saved(TabControlPage1), listNotice(TabControlPage2),

      TimerAttivita(loop, 50ms), TimerVersamenti(loop, 50ms), tmrAutoClose(loop, 10ms) {
    window.setInitialFocus(txtVisore);
    window.setKeyTargets({&txtVisore, &cmdConferma, {&cmdAnnulla, &PushButton1}, &Pulsantiera_Attivita});
    window.setNotice(saved);
    cmdConferma.setPrimary(true);
    comboData.setStepsPlace({5160, 7385, 3150, 680}); // a finger high, around the buttons' middle
    listNotice.setBounds(NoticeOverList);
    grd_mov_giornata.setNotice(listNotice);
    Virtual_KeyPAD.setReadBack(readBack);
    Virtual_KeyPAD.setTakesAll(true);
}

void DrawerControls::retire() {
    TimerAttivita.retire();
    TimerVersamenti.retire();
    tmrAutoClose.retire();
    handlers.clear();
    ml_RuntimeSupport.disconnect();
    view.reset();
}

} // namespace kova
