#include "base/ascii_text.h"
#include "base/utf8.h"
#include "coin_count/frm_CaricaMoneta.h"
#include "services/process_state.h"

namespace kova {
namespace {

constexpr Color Selected{255, 255, 0};

} // namespace

// The physical keyboard enters digits, wherever the focus is, and nothing else: no key may change a count
// field unseen.
void frm_CaricaMoneta::Form_KeyPress(char32_t character) {
    trapped(process_, "Form_KeyPress", [&] {
        if (character < U'0' || character > U'9')
            return;
        auto& entry = controls().txt_valuta;
        entry.setText(entry.text() + static_cast<char>(character));
    });
}

// The attached keypad is the one way to correct the entry. Its point is the region's decimal separator, once,
// so that what it enters can be a number there.
void frm_CaricaMoneta::Virtual_KeyPAD_Keyboard(const std::string& key) {
    auto& entry = controls().txt_valuta;
    const std::string& typed = entry.text();
    const std::string& separator = process_.platform.regional.decimalSeparator;
    if (equalIgnoringCase(key, "BACKSPACE")) {
        entry.setText(typed.substr(0, previousCharacter(typed, typed.size())));
    } else if (key == ".") {
        if (typed.find(separator) == std::string::npos)
            entry.setText(typed + separator);
    } else if (key != "*") {
        entry.setText(typed + key);
    }
}

void frm_CaricaMoneta::txtValuta_GotFocus(std::int32_t index) {
    trapped(process_, "txtValuta_GotFocus", [&] {
        if (IndiceMoneta_ > -1)
            field(IndiceMoneta_).setBackColor(colors::White);
        IndiceMoneta_ = index;
        controls().CMD_Carica.setCaption(count_.caption(static_cast<std::int16_t>(index)));
        field(index).setBackColor(Selected);
    });
}

// Index 0, not -1: the next load goes into the euro's 500, though nothing is shown selected. Meant so.
void frm_CaricaMoneta::FlatEdit_GotFocus() {
    IndiceMoneta_ = 0;
    controls().CMD_Carica.setCaption("");
}

void frm_CaricaMoneta::CMD_Carica_Click() {
    trapped(process_, "CMD_Carica_Click", [&] {
        if (IndiceMoneta_ < 0) {
            process_.platform.userInterface.messageBox(
                {text({41, "Selezionare il tipo di moneta!"}),
                 PlatformMessage::OkOnly + PlatformMessage::Information, text({1, "Gestione cassetto"}),
                 PlatformMessage::Route::Service});
            return;
        }
        auto& c = controls();
        field(IndiceMoneta_).setText(c.txt_valuta.text());
        c.txt_valuta.setText("");
        count_.load(counts());
        c.txtPrimaValuta.setText(count_.primaValuta());
        c.txtSecondaValuta.setText(count_.secondaValuta());
    });
}

void frm_CaricaMoneta::CMD_cancella_Click() {
    auto& c = controls();
    for (auto& count : c.txtValuta)
        count.setText("0");
    count_.clear();
    c.txtPrimaValuta.setText("");
    c.txtSecondaValuta.setText("");
}

void frm_CaricaMoneta::CMD_Annulla_Click() {
    trapped(process_, "CMD_Annulla_Click", [&] {
        result_ = NothingLoaded; // also where a confirmed count could not be taken and is shown again
        hide();
    });
}

void frm_CaricaMoneta::CMD_CaricaMoneta_Click() {
    trapped(process_, "CMD_CaricaMoneta_Click", [&] {
        count_.confirm(counts());
        result_ = Loaded;
        hide();
    });
}

} // namespace kova
