#include "base/ascii_text.h"
#include "base/numbered_errors.h"
#include "base/utf8.h"
#include "drawer_dialog/handler.h"
#include "services/conversions.h"

namespace kova {

void frm_Drawer_Management::Virtual_KeyPAD_Keyboard(const std::string& key) {
    trapped(process_, "Virtual_KeyPAD_Keyboard", [&] {
        auto& display = controls().txtVisore;
        if (equalIgnoringCase(key, "BACKSPACE")) {
            display.setText(""); // the whole amount, so that no half of a wrong one stays behind
        } else if (key == ".") {
            if (const std::string mark = decimalMark(); display.text().find(mark) == std::string::npos)
                display.setText(display.text() + mark);
        } else if (key != "*") {
            display.setText(display.text() + key);
        }
    });
}

void frm_Drawer_Management::txtVisore_KeyPress(char32_t& character) {
    character = NumericKeyFilter(character, {.decimals = true});
    if (character != U',' || decimalKey() == DecimalKey::Comma)
        return;
    const auto& display = controls().txtVisore;
    const std::string mark = decimalMark();
    std::string kept = display.text();
    kept.erase(display.selectionStart(), display.selectionEnd() - display.selectionStart());
    const bool wanted = !mark.empty() && kept.find(mark) == std::string::npos;
    character = wanted ? fromUtf8(mark).front() : U'\0';
}

DecimalKey frm_Drawer_Management::decimalKey() const {
    return machineDecimalKey_.value_or(process_.decimalKey);
}

std::string frm_Drawer_Management::decimalMark() const {
    return decimalKey() == DecimalKey::Region ? process_.platform.regional.decimalSeparator : ",";
}

// Only the double-movement screen hides its keyboard: there it lies over the payment grids. A step that fails
// is skipped, with the keyboard half shown a note can still be written.
void frm_Drawer_Management::txtNote_GotFocus() {
    if (!options().DoppioInserimentoObbligatorio)
        return;
    auto& c = controls();
    attempt([&] { c.cmdNascondiTastiera.setVisible(true); });
    attempt([&] { c.Virtual_Keyboard.setVisible(true); });
    attempt([&] { c.Virtual_Keyboard.bringToFront(); });
}

void frm_Drawer_Management::cmdNascondiTastiera_Click() {
    if (!options().DoppioInserimentoObbligatorio)
        return;
    auto& c = controls();
    attempt([&] { c.cmdNascondiTastiera.setVisible(false); });
    attempt([&] { c.Virtual_Keyboard.setVisible(false); });
}

void frm_Drawer_Management::cmdCassetto_Click(std::int16_t index) {
    trapped(process_, "cmdCassetto_Click", [&] {
        process_.selection.Cassetto = index;
        latchDrawerButtons();
    });
}

void frm_Drawer_Management::set_button_Drawer() {
    handled(ensureLoaded(), [this] { latchDrawerButtons(); });
}

void frm_Drawer_Management::latchDrawerButtons() {
    trapped(process_, "set_button_Drawer", [&] {
        auto& buttons = controls().cmdCassetto;
        for (auto& button : buttons)
            button.setLatched(false);
        const auto drawer = process_.selection.Cassetto;
        if (drawer == 0)
            return;
        const auto position = static_cast<std::size_t>(drawer) - 1;
        if (position >= buttons.size())
            throw noSuchArrayElement(drawer);
        buttons[position].setLatched(true);
    });
}

} // namespace kova
