#include "drawer_dialog/handler.h"
#include "services/conversions.h"

namespace kova {
namespace {

constexpr Color GridBackground{226, 226, 226};
constexpr Twips Gap{120};
constexpr Twips FullPaymentHeight{7095};
constexpr Twips PaymentHeightAboveDrawers{4215};

} // namespace

void frm_Drawer_Management::Form_Load() {
    trapped(process_, "Form_Load", [&] {
        auto& c = controls();
        idAttivitaFondoCassaIniziale_ = -1;
        c.ml_RuntimeSupport = process_.platform.languageRuntime.languageChanged.connect(
            [this](std::int32_t id, const std::string& name) {
                handled(lifetime_.controls(), [&] { ml_RuntimeSupport_LanguageChanged(id, name); });
            });
        ApplyCaptions();
        c.cmdRecuperaFondoCassaPrecedente.setVisible(false);
        c.cmdNascondiTastiera.setVisible(false);
        for (auto* grid : {&c.Pulsantiera_Valuta, &c.Pulsantiera_Pagamenti, &c.Pulsantiera_Attivita,
                           &c.Pulsantiera_Pagamenti_Versamenti})
            grid->setBackColor(GridBackground);
        c.TabControlPage1.setCaption(text({1, "Gestione cassetto"}));
        c.TabControlPage2.setCaption(text({48, "Movimenti"}));
        setupReportControl();
        process_.ErrorLog().SetApplicationName("KOVA");
        process_.ErrorLog().SetLogFile(process_.platform.componentFolder + "/logfile.log");
        Load_Pagamenti(c.Pulsantiera_Pagamenti);
        if (options().idPagamentoPredefinito != -1)
            Pulsantiera_Pagamenti_buttonClick(std::to_string(options().idPagamentoPredefinito));
        if (options().DoppioInserimentoObbligatorio)
            Load_Pagamenti(c.Pulsantiera_Pagamenti_Versamenti);
        Load_Attivita();
        c.comboData.setText(shortDate(process_.platform.clock.now(), process_.platform.regional));
        c.Pulsantiera_Pagamenti.setHeight(FullPaymentHeight);
        if (options().DoppioInserimentoObbligatorio)
            layOutDoubleMovement();
        showDrawersWhenConfigured();
        chooseCurrency();
        c.lblCaptionVersamenti.setVisible(false);
        c.Pulsantiera_Pagamenti_Versamenti.setVisible(false);
    });
}

void frm_Drawer_Management::layOutDoubleMovement() {
    auto& c = controls();
    c.lblCaptionVersamenti.setTop(c.lblTipoMovimento.bounds().top);
    c.lblCaptionVersamenti.setLeft(c.lblTipoMovimento.bounds().left);
    const Rect& payments = c.Pulsantiera_Pagamenti.bounds();
    auto& deposits = c.Pulsantiera_Pagamenti_Versamenti;
    deposits.setTop(payments.top);
    deposits.setHeight(payments.height);
    deposits.setWidth(payments.width);
    deposits.setLeft(payments.right() + Gap);
    c.lblNote.setTop(c.lblTipoMovimento.bounds().top);
    c.lblNote.setLeft(deposits.bounds().right() + Gap);
    c.txtNote.setTop(deposits.bounds().top);
    c.txtNote.setLeft(c.lblNote.bounds().left);
    c.txtNote.setHeight(Twips(3330));
    c.txtNote.setWidth(Twips(7095));
    c.Virtual_Keyboard.setVisible(false);
}

void frm_Drawer_Management::showDrawersWhenConfigured() {
    auto& c = controls();
    c.frameCassetti.setVisible(false);
    const Recordset rows = process_.query(
        {"SELECT Valore FROM tabimpostazioni WHERE descrizione = 'Attiva_Gestione_MultiCassetto'",
         CursorType::Static, LockType::Optimistic},
        Word::ReadingSettings);
    if (rows.endOfFile() ||
        asText(NullToDefault(rows.field("Valore"), "0"), process_.platform.regional) == "0")
        return;
    c.frameCassetti.setVisible(true);
    c.Pulsantiera_Pagamenti.setHeight(PaymentHeightAboveDrawers);
}

void frm_Drawer_Management::chooseCurrency() {
    auto& c = controls();
    auto& selection = process_.selection;
    c.frame_valuta.setVisible(false);
    if (options().UsaSoloValutaAziendale) {
        selection.Valuta = options().ValutaAziendale;
        selection.MultiValuta = false;
        return;
    }
    const Recordset rows = process_.query(
        {"SELECT valuta FROM tabValute", CursorType::Static, LockType::Optimistic}, Word::ReadingChoices);
    if (rows.endOfFile()) {
        selection.Valuta = options().ValutaAziendale;
        selection.MultiValuta = false;
    } else if (rows.recordCount() == 1) {
        Load_Valute();
        selection.MultiValuta = false;
        selection.Valuta = options().ValutaAziendale; // the host's choice, not the row's
    } else {
        selection.MultiValuta = true;
        c.frame_valuta.setVisible(true);
        Load_Valute();
    }
}

void frm_Drawer_Management::Form_Activate() {
    trapped(process_, "cmdCassetto_Click", [&] {
        auto& c = controls();
        c.Virtual_Keyboard.bind(&c.txtNote);
        if (!options().DoppioInserimentoObbligatorio)
            return;
        c.Pulsantiera_Attivita.setVisible(false);
        c.lblTipoMovimento.setVisible(false);
        c.Pulsantiera_Pagamenti_Versamenti.setVisible(true);
        c.lblCaptionVersamenti.setVisible(true);
        c.Label2.setCaption(text({56, "Prelievo"}));
        c.window.setCaption(text({55, "Gestione doppio movimento cassetto"}));
    });
}

void frm_Drawer_Management::PredisponiPerInserimentoFondoCassaIniziale() {
    handled(ensureLoaded(), [this] {
        trapped(process_, "PredisponiPerInserimentoFondoCassaIniziale", [&] {
            auto& c = controls();
            Pulsantiera_Pagamenti_buttonClick(elencoPagamenti().GetItem(1, IndicePagamentoAziendale_));
            c.Pulsantiera_Pagamenti.setEnabled(false);
            Pulsantiera_Attivita_buttonClick(std::to_string(idAttivitaFondoCassaIniziale_));
            c.Pulsantiera_Attivita.setEnabled(false);
        });
    });
}

} // namespace kova
