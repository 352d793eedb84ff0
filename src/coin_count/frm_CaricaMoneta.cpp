#include "coin_count/frm_CaricaMoneta.h"

#include "base/numbered_errors.h"
#include "services/process_state.h"

#include <utility>

namespace kova {
namespace {

constexpr Color Grey{192, 192, 192};

} // namespace

frm_CaricaMoneta::~frm_CaricaMoneta() {
    attempt([this] { unload(); });
}

TextBox& frm_CaricaMoneta::field(std::int32_t index) {
    return controls().txtValuta.at(static_cast<std::size_t>(index));
}

CoinCount::Counts frm_CaricaMoneta::counts() {
    CoinCount::Counts texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = controls().txtValuta[i].text();
    return texts;
}

std::string frm_CaricaMoneta::text(LocalisedString entry) const {
    return GetLocalizedString(process_, entry);
}

void frm_CaricaMoneta::load() {
    if (controls_)
        return;
    controls_ = lifetime_.load();
    connectHandlers();
    try {
        Form_Load();
    } catch (...) {
        unload(); // half a dialog must not be found again
        throw;
    }
}

void frm_CaricaMoneta::connectHandlers() {
    auto& c = *controls_;
    const auto on = [&](auto& signal, auto handler) { c.handlers.push_back(signal.connect(handler)); };
    on(c.window.keyPress, [this](char32_t character) { Form_KeyPress(character); });
    on(c.window.closeRequested, [this] { unload(); });
    for (auto& field : c.txtValuta)
        on(field.gotFocus, [this, index = *field.index()] { txtValuta_GotFocus(index); });
    for (auto& placeholder : c.FlatEdit)
        on(placeholder.gotFocus, [this] { FlatEdit_GotFocus(); });
    on(c.txt_valuta.changed, [this](Property property) {
        if (property == Property::Text)
            showNotLoaded();
    });
    on(c.CMD_Carica.pressed, [this] { CMD_Carica_Click(); });
    on(c.CMD_cancella.pressed, [this] { CMD_cancella_Click(); });
    on(c.CMD_Annulla.pressed, [this] { CMD_Annulla_Click(); });
    on(c.CMD_CaricaMoneta.pressed, [this] { CMD_CaricaMoneta_Click(); });
}

void frm_CaricaMoneta::Form_Load() {
    auto& c = controls();
    c.ml_RuntimeSupport = process_.platform.languageRuntime.languageChanged.connect(
        [this](std::int32_t id, const std::string& name) { ml_RuntimeSupport_LanguageChanged(id, name); });
    ApplyCaptions();
    trapped(process_, "load form CaricaMonete", [&] {
        if (process_.settings.ValutaAziendale == "€")
            greySecondCurrency();
        c.handlers.push_back(
            c.Virtual_KeyPAD.Keyboard.connect([this](std::string& key) { Virtual_KeyPAD_Keyboard(key); }));
        c.Virtual_KeyPAD.setDecimalMark(process_.platform.regional.decimalSeparator);
        c.CMD_Annulla.setIcon(PushButton::Icon::Cancel);
        c.CMD_CaricaMoneta.setIcon(PushButton::Icon::Confirm);
        c.CMD_cancella.setIcon(PushButton::Icon::Clear);
        c.window.setCaption(text({42, "Carica moneta"}));
    });
}

// Grey on grey: whatever stands in the column cannot be seen. A touch must not lead a load there, which
// nobody would see and nothing would take.
void frm_CaricaMoneta::greySecondCurrency() {
    auto& c = controls();
    c.lblValutaSec.setVisible(false);
    for (std::size_t i = CoinCount::FirstOfSecondCurrency; i < c.txtValuta.size(); ++i) {
        auto& field = c.txtValuta[i];
        field.setBackColor(Grey);
        field.setForeColor(Grey);
        field.setLocked(true);
        field.setTabStop(false);
        field.setInert(true);
    }
}

void frm_CaricaMoneta::ApplyCaptions() {
    auto& c = controls();
    const auto apply = [&](LocalisedString entry, auto set) {
        if (const std::string found = text(entry); !found.empty())
            set(found);
    };
    apply({19, "Carica moneta"}, [&](const std::string& found) { c.window.setCaption(found); });
    apply({40, "Annulla"}, [&](const std::string& found) { c.CMD_Annulla.setCaption(found); });
    apply({20, "Cancella monete"}, [&](const std::string& found) { c.CMD_cancella.setToolTip(found); });
    apply({21, "Carica monete"}, [&](const std::string& found) { c.CMD_CaricaMoneta.setCaption(found); });
    apply({22, "0"}, [&](const std::string& found) { field(28).setText(found); });
    const auto word = [&](Word which) { return std::string(inWords(which, process_.CurrentLanguageId)); };
    attempt([&] { c.txt_valuta.setSpokenName(word(Word::Pieces)); });
    attempt([&] { c.CMD_Carica.setSpokenName(word(Word::LoadPieces)); });
}

void frm_CaricaMoneta::sayNotLoaded(bool say) noexcept {
    saysNotLoaded_ = say;
    showNotLoaded();
}

void frm_CaricaMoneta::showNotLoaded() noexcept {
    attempt([&] {
        auto& c = controls();
        ReadBack::Content content;
        content.hintWanted = saysNotLoaded_;
        if (saysNotLoaded_ && !c.txt_valuta.text().empty())
            content.hint = inWords(Word::NotLoaded, process_.CurrentLanguageId);
        c.readBack.show(std::move(content));
    });
}

void frm_CaricaMoneta::ml_RuntimeSupport_LanguageChanged(std::int32_t LanguageID,
                                                         const std::string& Language) {
    SetLanguage(process_, LanguageID, Language);
    ApplyCaptions();
    showNotLoaded();
}

void frm_CaricaMoneta::setMetroStyle() {
    auto& c = controls(); // a colour that cannot be shown is no reason to do without the others
    attempt([&] { c.FrameMoney.setBackColor(colors::DarkBackground); });
    attempt([&] { c.window.setBackColor(colors::DarkBackground); });
    for (auto& label : c.Label2)
        attempt([&] { label.setForeColor(colors::White); });
    attempt([&] { c.lblValutaSec.setForeColor(colors::White); });
    attempt([&] { c.lblValutaMain.setForeColor(colors::White); });
    for (auto* button : {&c.CMD_Annulla, &c.CMD_cancella, &c.CMD_CaricaMoneta, &c.CMD_Carica}) {
        attempt([&] { button->setOwnColors(true); });
        attempt([&] { button->setBackColor(colors::DarkFace); });
        attempt([&] { button->setForeColor(colors::White); });
    }
}

// A person's gestures are all handled in here. A handler may end in the unloading of the dialog: it lives on
// in the hands of its caller, and its controls with it.
bool frm_CaricaMoneta::showModal() {
    if (controls().window.visible()) // by another component's dialog, which takes the count
        throw alreadyDisplayed();
    lifetime_.showModal();
    return loaded();
}

void frm_CaricaMoneta::hide() {
    process_.windows.remove(controls().window);
}

void frm_CaricaMoneta::unload() {
    lifetime_.unload();
}

} // namespace kova
