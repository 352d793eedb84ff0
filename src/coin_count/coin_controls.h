#pragma once
#include "coin_count/coin_count.h"
#include "ports/user_interface.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/text_box.h"
#include "widgets/window.h"

#include <array>
#include <memory>
#include <vector>

namespace kova {

/// The controls of a coin count in their design state.
struct CoinControls {
    CoinControls();
    /// Takes the set out of service: no gesture has an effect, the view closes.
    void retire();

    Window window;

    // In order of tabbing and from back to front.
    TextBox txt_valuta; ///< the count being typed
    PushButton CMD_Carica;
    NumericKeypad Virtual_KeyPAD;
    PushButton CMD_cancella;
    PushButton CMD_Annulla;
    PushButton CMD_CaricaMoneta;
    GroupFrame FrameMoney;
    Label lblValutaSec;
    Label lblValutaMain;
    std::array<Label, 15> Label2; ///< of the rows but two, in their order; the last one of the totals
    Label Label3;                 ///< of the row "500"
    Label Label4;                 ///< of the row "2"
    /// In the two cells that no denomination fills, and a third one behind a count field.
    std::array<TextBox, 3> FlatEdit;
    std::array<TextBox, CoinCount::FieldCount> txtValuta; ///< euro from 0, second currency from 15
    TextBox txtSecondaValuta;
    TextBox txtPrimaValuta;

    ReadBack readBack; ///< beside the controls: that a count is typed and not loaded

    std::vector<Connection> handlers; ///< what the dialog connected to the controls above
    Connection ml_RuntimeSupport;     ///< the dialog's language-change notifier
    std::unique_ptr<WindowView> view;
};

} // namespace kova
