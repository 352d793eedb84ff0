#include "component/cls_Kova_Drawer_Man.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "drawer_dialog/sent_movement.h"
#include "platform/letter_case.h"
#include "services/conversions.h"

#include <array>

namespace kova {
namespace {

using Direction = ReadBack::Direction;

constexpr Rect LeftOfConfirm{3480, 7560, 7920, 585};
constexpr Rect EndOfNote{7890, 3090, 6945, 555}; // in a double movement, above the keyboard

enum class Word { In, Out, NoNumber, Saved };

/// The string table has no entries for these.
std::string_view inWords(Word word, std::int32_t languageId) {
    struct Translations {
        std::string_view italian, german, english;
    };
    static constexpr std::array<Translations, 4> words{{{"Entrata", "Eingang", "In"},
                                                        {"Uscita", "Ausgang", "Out"},
                                                        {"Non è un numero", "Keine Zahl", "Not a number"},
                                                        {"Registrato", "Gebucht", "Saved"}}};
    const Translations& found = words[static_cast<std::size_t>(word)];
    return languageId == language::German    ? found.german
           : languageId == language::English ? found.english
                                             : found.italian;
}

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

bool isAllowed(const SettingsStore& store, const std::string& aid) {
    const auto value = store.read("SOFTWARE\\ZELT\\KOVA", "Screen", aid);
    return !value || (*value != "0" && !equalIgnoringCase(*value, "off"));
}

ScreenAids allowedAids(const SettingsStore& store) {
    return {isAllowed(store, "AmountReadBack"), isAllowed(store, "Direction"),
            isAllowed(store, "Confirmation")};
}

} // namespace

void frm_Drawer_Management::connectScreenAids() {
    auto& c = *controls_;
    machineAids_ = allowedAids(process_.platform.settingsStore);
    c.handlers.push_back(c.txtVisore.changed.connect([this](Property property) {
        if (property == Property::Text)
            showReadBack();
    }));
    c.handlers.push_back(process_.entryChanged.connect([this] { showReadBack(); }));
    c.handlers.push_back(c.cmdNascondiTastiera.changed.connect([this](Property property) {
        if (property == Property::Visible)
            placeNotice();
    }));
    placeNotice();
}

// The selection outlives the dialog and is shared by all: what is shown is what would be sent.
void frm_Drawer_Management::showReadBack() noexcept {
    if (!controls_)
        return;
    ReadBack& readBack = controls_->readBack;
    const bool shown = attempt([&] {
        const auto& regional = process_.platform.regional;
        const auto& selection = process_.selection;
        const auto languageId = process_.CurrentLanguageId;
        const std::string& typed = controls_->txtVisore.text();
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
    if (controls_)
        attempt([&] {
            controls_->saved.setBounds(controls_->cmdNascondiTastiera.visible() ? EndOfNote : LeftOfConfirm);
        });
}

std::string frm_Drawer_Management::noticeLine(const SentMovement& movement) noexcept {
    std::string line;
    const bool complete = attempt([&] {
        const auto* payment = movement.payments.find(std::to_string(movement.idpagamento));
        const auto* activity = controls().Pulsantiera_Attivita.find(std::to_string(movement.tipoIncasso));
        line = sign(movement.isIncasso ? Direction::In : Direction::Out);
        line.append(" ").append(
            withCurrency(process_.numberFormat().FormatExactly(movement.importo), movement.Valuta));
        for (const std::string& caption : {activity != nullptr ? activity->caption : movement.activity,
                                           payment != nullptr ? payment->caption : std::string()})
            if (!caption.empty())
                line.append(" · ").append(caption);
    });
    return complete ? line : std::string();
}

// A dialog that is about to close has nothing more to say.
void frm_Drawer_Management::showSaved(std::string notice) noexcept {
    if (!controls_ || notice.empty())
        return;
    attempt([&] {
        if (!process_.screenAids.confirmation || !machineAids_.confirmation ||
            component().ChiusuraAutomatica())
            return;
        controls_->saved.show(
            std::string(inWords(Word::Saved, process_.CurrentLanguageId)).append(": ").append(notice));
    });
}

} // namespace kova
