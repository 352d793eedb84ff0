#include "base/ascii_text.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/conversions.h"
#include "services/message_box.h"

namespace kova {
namespace {

constexpr std::int32_t InformationIcon = 64;
constexpr std::string_view ConfirmLabel = "cmdConferma_Click"; // one label for the button and both saves

} // namespace

void frm_Drawer_Management::cmdConferma_Click() {
    trapped(process_, ConfirmLabel, [&] {
        auto& button = controls().cmdConferma;
        const auto confirm = [&] {
            button.setEnabled(false);
            const bool saved = savesPairs() ? SalvaMovimentoDoppio() : SalvaMovimento();
            if (saved && options().ChiusuraAutomatica)
                controls().tmrAutoClose.start();
        };
        ended(confirm, [&] { button.setEnabled(true); });
    });
}

bool frm_Drawer_Management::savesPairs() const {
    return options().DoppioInserimentoObbligatorio && !equalIgnoringCase(process_.SoftwareName, "KOVA");
}

bool frm_Drawer_Management::SalvaMovimento() {
    bool saved = false;
    const auto tell = [&](const std::string& why) {
        if (!saved)
            showNotSaved({}, why);
    };
    trapped(process_, ConfirmLabel, tell, [&] {
        auto& s = process_.selection;
        if (s.idPagamento == -1)
            return refuse({43, "Selezionare un pagamento."}, &controls().Pulsantiera_Pagamenti);
        if (s.idAttivita == -1)
            return refuse({44, "Selezionare un tipo di operazione."}, &controls().Pulsantiera_Attivita);
        if (controls().txtNote.text().empty())
            return refuse({45, "Caricare una nota."}, &controls().txtNote);
        if (!amountIsNumeric())
            return refuse({46, "Caricare un importo valido."}, &controls().txtVisore);
        if (s.Valuta.empty())
            return refuse({47, "Selezionare la valuta relativa all'importo."},
                          &controls().Pulsantiera_Valuta);

        Movement movement{s.idPagamento, amount(),     s.Valuta,   controls().txtNote.text(),
                          s.Cassetto,    s.idAttivita, s.isIncasso};
        const std::vector<std::string> sent{noticeLine(movement, controls().Pulsantiera_Pagamenti, "")};
        parent().SalvaPagamento(s.idPagamento, movement.importo, s.Valuta, movement.note, s.Cassetto,
                                s.idAttivita, s.isIncasso);
        saved = true;
        showSaved(sent);

        s.idAttivita = -1;
        s.isIncasso = false;
        s.Cassetto = 0;
        s.idPagamento = -1;
        emptyEntries();
        reloadPayments();
        Load_Attivita();
        if (s.MultiValuta)
            Load_Valute();
        // In initial-float mode the drawer was opened when the activity was applied.
        if (!options().PredisponiInserimentoFondoCassaIniziale && s.isOpenECRDrawer)
            parent().ApriCassetto();
        s.isOpenECRDrawer = false;
    });
    return saved;
}

bool frm_Drawer_Management::SalvaMovimentoDoppio() {
    bool saved = false;
    std::vector<std::string> sent;
    const auto tell = [&](const std::string& why) {
        if (!saved)
            showNotSaved(sent, why);
    };
    trapped(process_, ConfirmLabel, tell, [&] {
        auto& s = process_.selection;
        auto& withdrawal = process_.settings.idCassettoCausPred_Prelievi;
        auto& deposit = process_.settings.idCassettoCausPred_Versamenti;
        if (s.idPagamento == -1)
            return refuse({51, "Selezionare la modalità pagamento per il prelievo."},
                          &controls().Pulsantiera_Pagamenti);
        if (s.idPagamentoVersamento == -1)
            return refuse({52, "Selezionare la modalità pagamento per il versamento."},
                          &controls().Pulsantiera_Pagamenti_Versamenti);
        if (withdrawal == -1)
            return refuse({53, "Non è possibile salvare il movimento poichè non è configurata la causale "
                               "predefinita cassetto per i prelievi."},
                          nullptr);
        if (deposit == -1)
            return refuse({54, "Non è possibile salvare il movimento poichè non è configurata la causale "
                               "predefinita cassetto per i vesamenti."},
                          nullptr);
        if (!amountIsNumeric())
            return refuse({46, "Caricare un importo valido."}, &controls().txtVisore);
        if (s.Valuta.empty())
            return refuse({47, "Selezionare la valuta relativa all'importo."},
                          &controls().Pulsantiera_Valuta);

        sent.reserve(2); // nothing may fail between the host's answer and what is made of it
        const auto send = [&](ButtonGrid& grid, std::int32_t& payment, std::int32_t& activity,
                              LocalisedString name) {
            AggiornaVariabiliSelezioneAttivita(activity);
            const std::string& typed = controls().txtNote.text();
            Movement movement{payment,    amount(), s.Valuta,   typed.empty() ? text(name) : typed,
                              s.Cassetto, activity, s.isIncasso};
            std::string notice = noticeLine(movement, grid, text(name));
            parent().SalvaPagamento(payment, movement.importo, s.Valuta, movement.note, s.Cassetto, activity,
                                    s.isIncasso);
            sent.push_back(std::move(notice));
        };
        send(controls().Pulsantiera_Pagamenti, s.idPagamento, withdrawal, {56, "Prelievo"});
        send(controls().Pulsantiera_Pagamenti_Versamenti, s.idPagamentoVersamento, deposit,
             {50, "Versamento"});
        saved = true;
        showSaved(sent);

        s.idAttivita = -1;
        s.isIncasso = false;
        s.Cassetto = 0;
        s.idPagamento = -1;
        s.idPagamentoVersamento = -1;
        emptyEntries();
        reloadPayments();
        if (s.MultiValuta)
            Load_Valute();
        if (s.isOpenECRDrawer) // the deposit's flag: it was read last
            parent().ApriCassetto();
        s.isOpenECRDrawer = false;
    });
    return saved;
}

void frm_Drawer_Management::refuse(LocalisedString reason, const Control* field) {
    controls().refused = field;
    showNeeds();
    process_.play(Sounds::Tone::Refused);
    ShowMessage(process_, text(reason), InformationIcon, text({1, "Gestione cassetto"}), field);
}

bool frm_Drawer_Management::amountIsNumeric() {
    return isNumeric(controls().txtVisore.text(), process_.platform.regional);
}

double frm_Drawer_Management::amount() {
    return toDouble(controls().txtVisore.text(), process_.platform.regional);
}

void frm_Drawer_Management::emptyEntries() {
    controls().txtNote.setText("");
    controls().txtVisore.setText("");
    latchDrawerButtons();
}

void frm_Drawer_Management::reloadPayments() {
    Load_Pagamenti(controls().Pulsantiera_Pagamenti);
    if (options().idPagamentoPredefinito != -1)
        Pulsantiera_Pagamenti_buttonClick(std::to_string(options().idPagamentoPredefinito));
    if (options().DoppioInserimentoObbligatorio)
        Load_Pagamenti(controls().Pulsantiera_Pagamenti_Versamenti);
}

} // namespace kova
