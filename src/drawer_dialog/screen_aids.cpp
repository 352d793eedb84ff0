#include "base/ascii_text.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/conversions.h"

namespace kova {
namespace {

using Direction = ReadBack::Direction;

std::string_view sign(Direction direction) {
    return direction == Direction::In ? "+" : "−";
}

ReadBack::Way way(Direction direction, std::int32_t languageId) {
    const Word word = direction == Direction::In ? Word::In : Word::Out;
    return {direction, std::string(sign(direction)).append(" ").append(inWords(word, languageId))};
}

std::string withCurrency(std::string amount, const std::string& currency) {
    return currency.empty() ? amount : amount.append(" ").append(currency);
}

std::optional<std::string> machineSetting(const SettingsStore& store, const std::string& name) {
    return store.read(std::string(SettingsStore::BaseKey), "Screen", name);
}

std::string joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines)
        all.append(all.empty() ? "" : "\n").append(line);
    return all;
}

bool isOff(const std::string& value) {
    return value == "0" || equalIgnoringCase(value, "off");
}

bool isAllowed(const SettingsStore& store, const std::string& aid) {
    const auto value = machineSetting(store, aid);
    return !value || !isOff(*value);
}

/// Nothing where the machine leaves it to the host.
std::optional<bool> soundsOf(const SettingsStore& store) {
    const auto value = machineSetting(store, "Sounds");
    return value ? std::optional(!isOff(*value)) : std::nullopt;
}

ScreenAids allowedAids(const SettingsStore& store) {
    return {isAllowed(store, "AmountReadBack"), isAllowed(store, "Direction"),
            isAllowed(store, "Confirmation")};
}

/// Nothing where the machine leaves it to the host.
std::optional<DecimalKey> decimalKeyOf(const SettingsStore& store) {
    const auto value = machineSetting(store, "DecimalKey");
    if (value && equalIgnoringCase(*value, "comma"))
        return DecimalKey::Comma;
    if (value && equalIgnoringCase(*value, "region"))
        return DecimalKey::Region;
    return std::nullopt;
}

} // namespace

void frm_Drawer_Management::connectScreenAids() {
    auto& c = *lifetime_;
    machineAids_ = allowedAids(process_.platform.settingsStore);
    process_.machineSounds = soundsOf(process_.platform.settingsStore);
    machineDecimalKey_ = decimalKeyOf(process_.platform.settingsStore);
    c.handlers.push_back(c.txtVisore.changed.connect([this](Property property) {
        if (property == Property::Text)
            showReadBack();
    }));
    c.handlers.push_back(process_.entryChanged.connect([this] { showAids(); }));
    c.handlers.push_back(c.cmdNascondiTastiera.changed.connect([this](Property property) {
        if (property == Property::Visible)
            placeNotice();
    }));
    connectNotice();
    placeNotice();
}

// Whoever enters or chooses something else has read that the movement was not saved.
void frm_Drawer_Management::connectNotice() {
    auto& c = *lifetime_;
    for (TextBox* const box : {&c.txtVisore, &c.txtNote})
        c.handlers.push_back(box->changed.connect([&c](Property property) {
            if (property == Property::Text)
                c.saved.goOn();
        }));
    const auto goOn = [&c](auto&&...) { c.saved.goOn(); };
    for (ButtonGrid* const grid : {&c.Pulsantiera_Attivita, &c.Pulsantiera_Pagamenti,
                                   &c.Pulsantiera_Pagamenti_Versamenti, &c.Pulsantiera_Valuta})
        c.handlers.push_back(grid->buttonClick.connect(goOn));
    for (PushButton& button : c.cmdCassetto)
        c.handlers.push_back(button.pressed.connect(goOn));
}

void frm_Drawer_Management::showAids() noexcept {
    showReadBack();
    if (!loaded())
        return;
    attempt([&] { lifetime_->Virtual_KeyPAD.setDecimalMark(decimalMark()); });
    attempt([&] { lifetime_->saved.rephrase(noticeText()); });
    attempt([&] {
        const auto word = [&](Word which) { return std::string(inWords(which, process_.CurrentLanguageId)); };
        auto& list = lifetime_->grd_mov_giornata;
        list.setMenuTexts({word(Word::CopySelection), word(Word::SelectAll), word(Word::SaveList)});
        list.setBrokenOffText(word(Word::ListCutShort));
    });
}

// The selection outlives the dialog and is shared by all: what is shown is what would be sent.
void frm_Drawer_Management::showReadBack() noexcept {
    if (!loaded())
        return;
    ReadBack& readBack = lifetime_->readBack;
    const bool shown = attempt([&] {
        const auto& regional = process_.platform.regional;
        const auto& selection = process_.selection;
        const auto languageId = process_.CurrentLanguageId;
        const std::string& typed = lifetime_->txtVisore.text();
        const bool amount = process_.screenAids.amountReadBack && machineAids_.amountReadBack;
        const bool direction = process_.screenAids.direction && machineAids_.direction;
        ReadBack::Content content;
        content.wanted = amount || direction;
        content.isNumber = !amount || typed.empty() || isNumeric(typed, regional);
        if (!content.isNumber)
            content.amount = inWords(Word::NoNumber, languageId);
        else if (amount && !typed.empty())
            content.amount = withCurrency(process_.numberFormat().FormatExactly(toDouble(typed, regional)),
                                          selection.Valuta);
        if (direction && savesPairs()) {
            if (!typed.empty())
                content.ways = {way(Direction::Out, languageId), way(Direction::In, languageId)};
        } else if (direction && selection.idAttivita != -1) {
            content.ways = {way(selection.isIncasso ? Direction::In : Direction::Out, languageId)};
        }
        readBack.show(std::move(content));
    });
    if (!shown) // no echo is better than one of another amount
        attempt([&] { readBack.show({}); });
}

void frm_Drawer_Management::placeNotice() noexcept {
    if (loaded())
        attempt([&] {
            lifetime_->saved.setBounds(lifetime_->cmdNascondiTastiera.visible()
                                           ? DrawerControls::NoticeAboveKeyboard
                                           : DrawerControls::NoticeLeftOfConfirm);
        });
}

std::string frm_Drawer_Management::noticeLine(const Movement& movement, const ButtonGrid& payments,
                                              const std::string& activityName) noexcept {
    std::string line;
    const bool complete = attempt([&] {
        const auto* payment = payments.find(std::to_string(movement.idpagamento));
        const auto* activity = controls().Pulsantiera_Attivita.find(std::to_string(movement.tipoIncasso));
        line = sign(movement.isIncasso ? Direction::In : Direction::Out);
        line.append(" ").append(
            withCurrency(process_.numberFormat().FormatExactly(movement.importo), movement.Valuta));
        for (const std::string& caption : {activity != nullptr ? activity->caption : activityName,
                                           payment != nullptr ? payment->caption : std::string()})
            if (!caption.empty())
                line.append(" · ").append(caption);
    });
    return complete ? line : std::string();
}

std::string frm_Drawer_Management::noticeText() const {
    std::string all;
    for (const auto& [word, line] : notice_) {
        all.append(all.empty() ? "" : "\n").append(inWords(word, process_.CurrentLanguageId));
        all.append(line.empty() ? "" : ": ").append(line);
    }
    return all;
}

// A dialog that is about to close has nothing more to say.
void frm_Drawer_Management::showSaved(const std::vector<std::string>& lines) noexcept {
    process_.play(Sounds::Tone::Saved);
    attempt([&] { controls().cmdConferma.rest(); }); // a second touch would be refused over the success
    attempt([&] {
        if (options().ChiusuraAutomatica)
            return;
        show({{Word::Saved, joined(lines)}}, PageNotice::Kind::Success);
    });
}

void frm_Drawer_Management::showNotSaved(const std::vector<std::string>& sent,
                                         const std::string& why) noexcept {
    process_.play(Sounds::Tone::Refused);
    attempt([&] {
        if (sent.empty())
            show({{Word::NothingSaved, why}}, PageNotice::Kind::Failure);
        else
            show({{Word::OnlySaved, joined(sent)}, {Word::NotSaved, why}}, PageNotice::Kind::Failure);
    });
}

void frm_Drawer_Management::show(Notice notice, PageNotice::Kind kind) {
    if (!loaded() || !process_.screenAids.confirmation || !machineAids_.confirmation)
        return;
    notice_ = std::move(notice);
    lifetime_->saved.show(noticeText(), kind);
}

} // namespace kova
