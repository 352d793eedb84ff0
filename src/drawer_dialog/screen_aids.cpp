#include "base/ascii_text.h"
#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {
namespace {

std::optional<std::string> machineSetting(const SettingsStore& store, const std::string& name) {
    return store.read(std::string(SettingsStore::BaseKey), "Screen", name);
}

std::string joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines)
        all.append(all.empty() ? "" : "\n").append(line);
    return all;
}

ScreenAids allowedAids(const SettingsStore& store) {
    const auto allowed = [&](const char* aid) { return machineSwitch(store, aid).value_or(true); };
    return {allowed("AmountReadBack"), allowed("Direction"), allowed("Confirmation")};
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
    process_.machineSounds = machineSwitch(process_.platform.settingsStore, "Sounds");
    machineDecimalKey_ = decimalKeyOf(process_.platform.settingsStore);
    c.window.setSaveFolder(machineSetting(process_.platform.settingsStore, "ListFolder").value_or(""));
    c.handlers.push_back(process_.entryChanged.connect([this] { showAids(); }));
    c.handlers.push_back(process_.entryChanged.connect([this] { showWhetherListFits(); }));
    c.handlers.push_back(c.comboData.changed.connect([this](Property property) {
        if (property == Property::Text)
            showWhetherListFits();
    }));
    c.handlers.push_back(c.cmdNascondiTastiera.changed.connect([this](Property property) {
        if (property == Property::Visible)
            placeNotice();
    }));
    c.handlers.push_back(process_.serverSilenceChanged.connect([this] { showServerSilent(); }));
    connectNotice();
    placeNotice();
}

// Told until an answer comes.
void frm_Drawer_Management::showServerSilent() noexcept {
    if (!loaded())
        return;
    attempt([&] {
        auto& c = *lifetime_;
        const std::string words(inWords(Word::ServerSilent, process_.CurrentLanguageId));
        if (!process_.serverSilent) {
            for (PageNotice* const notice : {&c.saved, &c.listNotice})
                if (notice->text() == words)
                    notice->withdraw();
        } else if (!process_.tellsOfWaiting()) {
            return;
        } else if (c.tabs.selected() == 0) {
            show({{Word::ServerSilent, ""}}, PageNotice::Kind::Failure);
        } else {
            c.listNotice.show(words, PageNotice::Kind::Failure);
        }
    });
}

void frm_Drawer_Management::connectNotice() {
    auto& c = *lifetime_;
    for (TextBox* const box : {&c.txtVisore, &c.txtNote}) {
        c.handlers.push_back(box->changed.connect([this, box](Property property) {
            if (property != Property::Text)
                return;
            showEntry();
            goOn(*box);
        }));
        c.handlers.push_back(box->gotFocus.connect([this, box] { stopPointing(*box); }));
    }
    for (ButtonGrid* const grid : {&c.Pulsantiera_Attivita, &c.Pulsantiera_Pagamenti,
                                   &c.Pulsantiera_Pagamenti_Versamenti, &c.Pulsantiera_Valuta})
        c.handlers.push_back(grid->buttonClick.connect([this, grid](auto&&...) { goOn(*grid); }));
    for (PushButton& button : c.cmdCassetto)
        c.handlers.push_back(button.pressed.connect([this, &button] { goOn(button); }));
}

// Whoever enters or chooses something else has read that the movement was not saved.
void frm_Drawer_Management::goOn(const Control& touched) noexcept {
    stopPointing(touched);
    if (loaded())
        attempt([&] { lifetime_->saved.goOn(); });
}

void frm_Drawer_Management::showAids() noexcept {
    if (!loaded())
        return;
    showEntry();
    attempt([&] { lifetime_->Virtual_KeyPAD.setDecimalMark(decimalMark()); });
    attempt([&] { lifetime_->saved.rephrase(noticeText()); });
    attempt([&] {
        lifetime_->listNotice.rephrase(std::string(inWords(Word::ServerSilent, process_.CurrentLanguageId)));
    });
    attempt([&] {
        const auto word = [&](Word which) { return std::string(inWords(which, process_.CurrentLanguageId)); };
        auto& list = lifetime_->grd_mov_giornata;
        list.setMenuTexts({word(Word::CopySelection), word(Word::SelectAll), word(Word::SaveList)});
        list.setBrokenOffText(word(Word::ListCutShort));
    });
}

void frm_Drawer_Management::placeNotice() noexcept {
    if (loaded())
        attempt([&] {
            lifetime_->saved.setBounds(lifetime_->cmdNascondiTastiera.visible()
                                           ? DrawerControls::NoticeAboveKeyboard
                                           : DrawerControls::NoticeLeftOfConfirm);
        });
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
        if (options().ChiusuraAutomatica || !tellsWhatWasSent())
            return;
        show({{Word::Saved, joined(lines)}}, PageNotice::Kind::Success);
    });
}

void frm_Drawer_Management::showNotSaved(const std::vector<std::string>& sent,
                                         const std::string& why) noexcept {
    process_.play(Sounds::Tone::Refused);
    attempt([&] {
        if (!tellsWhatWasSent())
            return;
        if (sent.empty())
            show({{Word::NothingSaved, why}}, PageNotice::Kind::Failure);
        else
            show({{Word::OnlySaved, joined(sent)}, {Word::NotSaved, why}}, PageNotice::Kind::Failure);
    });
}

bool frm_Drawer_Management::tellsWhatWasSent() const {
    return loaded() && process_.screenAids.confirmation && machineAids_.confirmation;
}

void frm_Drawer_Management::show(Notice notice, PageNotice::Kind kind) {
    notice_ = std::move(notice);
    lifetime_->saved.show(noticeText(), kind);
}

} // namespace kova
