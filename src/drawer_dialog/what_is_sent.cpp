#include "base/ascii_text.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/conversions.h"
#include "services/currency_decimals.h"

#include <algorithm>

namespace kova {
namespace {

using Direction = ReadBack::Direction;

constexpr std::int32_t None = -1;
constexpr const char* HardBlank = "\u00A0";

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

/// What is sent without a button of its own is called by its number; nothing without an id.
std::string captionOf(const ButtonGrid& grid, std::int32_t id) {
    const std::string key = id == None ? "" : std::to_string(id);
    const auto* const button = key.empty() ? nullptr : grid.find(key);
    return button == nullptr || button->caption.empty() ? key : button->caption;
}

/// A sign is as good as its code.
std::string_view codeOf(std::string_view currency) {
    static constexpr std::pair<std::string_view, std::string_view> Signs[] = {
        {"€", "EUR"},   {"$", "USD"},  {"£", "GBP"},   {"¥", "JPY"},
        {"Fr.", "CHF"}, {"Fr", "CHF"}, {"SFr.", "CHF"}};
    const std::string_view name = trimmed(currency);
    for (const auto& [mark, code] : Signs)
        if (equalIgnoringCase(mark, name))
            return code;
    return name;
}

/// Of a number as `FormatExactly` writes it, zeros at its end aside.
int decimalsIn(const std::string& number, const std::string& separator) {
    constexpr int Many = 300;
    if (const auto exponent = number.find('e'); exponent != std::string::npos)
        return number[exponent + 1] == '-' ? Many : 0;
    const auto mark = number.rfind(separator);
    if (mark == std::string::npos)
        return 0;
    const auto last = number.find_last_not_of('0');
    return last < mark ? 0 : static_cast<int>(last + 1 - mark - separator.size());
}

} // namespace

bool frm_Drawer_Management::readsBack() const {
    return process_.screenAids.amountReadBack && machineAids_.amountReadBack;
}

bool frm_Drawer_Management::saysDirection() const {
    return process_.screenAids.direction && machineAids_.direction;
}

void frm_Drawer_Management::showEntry() noexcept {
    showReadBack();
    showNeeds();
}

// The selection outlives the dialog and is shared by all: what is shown is what would be sent.
void frm_Drawer_Management::showReadBack() noexcept {
    if (!loaded())
        return;
    ReadBack& readBack = lifetime_->readBack;
    const bool shown = attempt([&] {
        const auto& selection = process_.selection;
        const auto languageId = process_.CurrentLanguageId;
        ReadBack::Content content;
        content.wanted = readsBack() || saysDirection();
        content.wholeWanted = content.hintWanted = readsBack();
        if (readsBack())
            readBackAmount(content);
        if (saysDirection() && savesPairs()) {
            if (!lifetime_->txtVisore.text().empty())
                content.ways = {way(Direction::Out, languageId), way(Direction::In, languageId)};
        } else if (saysDirection() && selection.idAttivita != None) {
            content.ways = {way(selection.isIncasso ? Direction::In : Direction::Out, languageId)};
        }
        readBack.show(std::move(content));
    });
    if (!shown) // no echo is better than one of another movement
        attempt([&] { readBack.show({}); });
}

void frm_Drawer_Management::readBackAmount(ReadBack::Content& content) {
    const auto& regional = process_.platform.regional;
    const auto& currency = process_.selection.Valuta;
    const std::string& typed = lifetime_->txtVisore.text();
    content.isNumber = typed.empty() || isNumeric(typed, regional);
    if (!content.isNumber)
        content.amount = inWords(Word::NoNumber, process_.CurrentLanguageId);
    else if (!typed.empty())
        content.amount =
            withCurrency(process_.numberFormat().FormatExactly(toDouble(typed, regional)), currency);
    content.currency = part(currency, lifetime_->frame_valuta);
    content.lines = linesToSend();
    content.hint = hint();
}

ReadBack::Part frm_Drawer_Management::part(std::string text, const CaptionedControl& title) const {
    return {std::move(text),
            title.caption() + ": " + std::string(inWords(Word::Missing, process_.CurrentLanguageId))};
}

std::vector<ReadBack::Line> frm_Drawer_Management::linesToSend() const {
    const auto& c = *lifetime_;
    const auto& s = process_.selection;
    const auto line = [&](Direction direction, std::string activity, ReadBack::Part payment) {
        if (saysDirection() && !activity.empty())
            activity.insert(0, std::string(sign(direction)) + " ");
        ReadBack::Line parts{part(std::move(activity), c.lblTipoMovimento), std::move(payment)};
        if (c.frameCassetti.visible() || s.Cassetto != 0)
            parts.push_back({std::string(inWords(Word::Drawer, process_.CurrentLanguageId)) + HardBlank +
                                 (s.Cassetto == 0 ? "—" : std::to_string(s.Cassetto)),
                             ""});
        return parts;
    };
    const ReadBack::Part payment = part(captionOf(c.Pulsantiera_Pagamenti, s.idPagamento), c.Label2);
    if (!savesPairs())
        return {line(s.isIncasso ? Direction::In : Direction::Out,
                     captionOf(c.Pulsantiera_Attivita, s.idAttivita), payment)};
    const auto activity = [&](std::int32_t id, LocalisedString name) {
        const auto* const button = c.Pulsantiera_Attivita.find(std::to_string(id));
        return id == None ? "" : button == nullptr ? text(name) : button->caption;
    };
    return {line(Direction::Out, activity(process_.settings.idCassettoCausPred_Prelievi, {56, "Prelievo"}),
                 payment),
            line(Direction::In, activity(process_.settings.idCassettoCausPred_Versamenti, {50, "Versamento"}),
                 part(captionOf(c.Pulsantiera_Pagamenti_Versamenti, s.idPagamentoVersamento),
                      c.lblCaptionVersamenti))};
}

// The one that costs most, if there are several: the next is said when that is mended.
std::string frm_Drawer_Management::hint() const {
    const auto& s = process_.selection;
    const auto& regional = process_.platform.regional;
    const auto say = [&](Word word) { return std::string(inWords(word, process_.CurrentLanguageId)); };
    const std::string& typed = lifetime_->txtVisore.text();
    if (!s.Valuta.empty()) {
        for (const auto payment : {s.idPagamento, savesPairs() ? s.idPagamentoVersamento : None}) {
            const auto found = paymentCurrencies_.find(std::to_string(payment));
            if (payment != None && found != paymentCurrencies_.end() && !trimmed(found->second).empty() &&
                !equalIgnoringCase(codeOf(found->second), codeOf(s.Valuta)))
                return say(Word::PaymentIn) + " " + found->second + " ≠ " + s.Valuta;
        }
        if (isNumeric(typed, regional) &&
            decimalsIn(process_.numberFormat().FormatExactly(toDouble(typed, regional)),
                       regional.decimalSeparator) > decimalsOf(s.Valuta))
            return say(Word::TooManyDecimals) + " " + s.Valuta;
    }
    const auto& [activity, note] = automaticNote_;
    const bool ofAnother = s.idAttivita != None && s.idAttivita != activity;
    if (!savesPairs() && ofAnother && !note.empty() && lifetime_->txtNote.text() == note)
        return say(Word::NoteOfAnother);
    return {};
}

// An untouched form asks for nothing: what is missing is pointed at from the first entry or choice on, or
// when a refusal has asked for it.
bool frm_Drawer_Management::begun() const {
    const auto& c = *lifetime_;
    const auto& s = process_.selection;
    const bool chosen = savesPairs() ? s.idPagamentoVersamento != None : s.idAttivita != None;
    const bool paid = s.idPagamento != None && s.idPagamento != options().idPagamentoPredefinito;
    return c.refused != nullptr || chosen || paid || s.Cassetto != 0 || !c.txtVisore.text().empty() ||
           !c.txtNote.text().empty();
}

// The same conditions in the same order as those of the two saves.
void frm_Drawer_Management::showNeeds() noexcept {
    if (!loaded())
        return;
    attempt([&] {
        auto& c = *lifetime_;
        const auto& s = process_.selection;
        const bool pairs = savesPairs();
        struct Field {
            Control &field, &title;
            bool missing;
        };
        const Field fields[] = {
            {c.Pulsantiera_Pagamenti, c.Label2, s.idPagamento == None},
            {c.Pulsantiera_Pagamenti_Versamenti, c.lblCaptionVersamenti,
             pairs && s.idPagamentoVersamento == None},
            {c.Pulsantiera_Attivita, c.lblTipoMovimento, !pairs && s.idAttivita == None},
            {c.txtNote, c.lblNote, !pairs && c.txtNote.text().empty()},
            {c.txtVisore, c.Label4, !isNumeric(c.txtVisore.text(), process_.platform.regional)},
            {c.Pulsantiera_Valuta, c.frame_valuta, s.Valuta.empty()}};
        for (const Field& one : fields)
            if (c.refused == &one.field && !one.missing)
                c.refused = nullptr;
        const bool points = readsBack() && begun();
        for (const Field& one : fields) {
            const bool missing = points && one.missing;
            one.title.setNeed(missing ? Need::Missing : Need::None);
            one.field.setNeed(!missing                  ? Need::None
                              : c.refused == &one.field ? Need::Refused
                                                        : Need::Missing);
        }
    });
}

void frm_Drawer_Management::stopPointing(const Control& touched) noexcept {
    if (!loaded() || lifetime_->refused != &touched)
        return;
    lifetime_->refused = nullptr;
    showNeeds();
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

} // namespace kova
