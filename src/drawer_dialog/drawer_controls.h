#pragma once
#include "ports/timers.h"
#include "ports/user_interface.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/notices.h"
#include "widgets/report_grid.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"
#include "widgets/window.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace kova {

/// The controls of the movement dialog in their design state. Each loading of the dialog makes a fresh set;
/// a set whose dialog was unloaded lives on until the last handler that began with it has returned.
struct DrawerControls {
    explicit DrawerControls(EventLoop& loop);
    /// Takes the set out of service: no gesture and no timer has an effect, the view closes.
    void retire();

    Window window;
    TabControl tabs; ///< `TabControl`
    TabPage TabControlPage1, TabControlPage2;

    // The entry page, in order of tabbing and from back to front.
    Label Label4;
    TextBox txtVisore;
    PushButton CMD_CaricaMoneta;
    NumericKeypad Virtual_KeyPAD;
    Label Label2;
    ButtonGrid Pulsantiera_Pagamenti;
    Label lblTipoMovimento;
    ButtonGrid Pulsantiera_Attivita;
    Label lblCaptionVersamenti;
    ButtonGrid Pulsantiera_Pagamenti_Versamenti;
    GroupFrame frameCassetti;
    std::array<PushButton, 4> cmdCassetto; ///< indices 1 to 4
    GroupFrame frame_valuta;
    ButtonGrid Pulsantiera_Valuta;
    Label lblNote;
    TextBox txtNote;
    OnScreenKeyboard Virtual_Keyboard;
    PushButton cmdNascondiTastiera;
    PushButton cmdRecuperaFondoCassaPrecedente;
    PushButton cmdConferma;
    PushButton cmdAnnulla;

    // The movements page.
    ReportGrid grd_mov_giornata;
    Label Label5;
    DateField comboData;
    PushButton cmdCaricaMovimenti;
    PushButton cmdAnteprima;
    PushButton cmd_print;
    PushButton PushButton1;

    // Beside the controls. The notice moves out of the way of the keyboard of a double movement.
    static constexpr Rect NoticeLeftOfConfirm{3480, 7560, 7920, 585};
    static constexpr Rect NoticeAboveKeyboard{7890, 3090, 6945, 555};
    static constexpr Rect NoticeOverList{3480, 5880, 7920, 585};
    ReadBack readBack;
    PageNotice saved;
    const Control* refused = nullptr; ///< what the last refusal asked for, until it is touched
    PageNotice listNotice;
    std::string listRequest; ///< what the list was loaded with; empty before it is

    Timer TimerAttivita, TimerVersamenti; ///< 50 ms
    Timer tmrAutoClose;                   ///< 10 ms

    std::vector<Connection> handlers; ///< what the dialog connected to the controls above
    Connection ml_RuntimeSupport;     ///< the dialog's language-change notifier
    std::unique_ptr<WindowView> view;
};

} // namespace kova
