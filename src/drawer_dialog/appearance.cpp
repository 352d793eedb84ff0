#include "drawer_dialog/handler.h"

namespace kova {

void frm_Drawer_Management::ApplyCaptions() {
    auto& c = controls();
    const auto apply = [&](LocalisedString entry, CaptionedControl& target) {
        if (const std::string caption = text(entry); !caption.empty())
            target.setCaption(caption);
    };
    apply({1, "Gestione cassetto"}, c.window);
    apply({14, "Conta Monete"}, c.CMD_CaricaMoneta);
    apply({2, "Stampa"}, c.cmd_print);
    apply({3, "Chiudi"}, c.cmdAnnulla);
    apply({5, "Anteprima di stampa"}, c.cmdAnteprima);
    apply({4, "Carica"}, c.cmdCaricaMovimenti);
    apply({13, "Conferma"}, c.cmdConferma);
    apply({49, "Nascondi tastiera"}, c.cmdNascondiTastiera);
    apply({12, "Valuta"}, c.frame_valuta);
    apply({7, "Numero cassetto"}, c.frameCassetti);
    apply({16, "Tipo pagamento"}, c.Label2);
    apply({15, "Importo digitato"}, c.Label4);
    apply({6, "Data movimenti"}, c.Label5);
    apply({50, "Versamento"}, c.lblCaptionVersamenti);
    apply({17, "Note"}, c.lblNote);
    apply({18, "Tipo movimento"}, c.lblTipoMovimento);
    apply({3, "Chiudi"}, c.PushButton1);
}

void frm_Drawer_Management::ml_RuntimeSupport_LanguageChanged(std::int32_t LanguageID,
                                                              const std::string& Language) {
    SetLanguage(process_, LanguageID, Language);
    ApplyCaptions();
}

void frm_Drawer_Management::setColorMetroStyle() {
    handled(ensureLoaded(), [&] {
        auto& c = controls();
        MetroStyleAttivo_ = true;
        c.window.setBackColor(colors::DarkBackground);
        c.Virtual_Keyboard.setBackColor(colors::DarkBackground);
        c.TabControlPage1.setBackColor(colors::DarkBackground);
        c.TabControlPage2.setBackColor(colors::DarkBackground);
        for (auto* grid : {&c.Pulsantiera_Valuta, &c.Pulsantiera_Pagamenti, &c.Pulsantiera_Attivita,
                           &c.Pulsantiera_Pagamenti_Versamenti})
            grid->setBackColor(colors::DarkBackground);
        for (auto* label :
             {&c.lblCaptionVersamenti, &c.lblTipoMovimento, &c.Label2, &c.lblNote, &c.Label4, &c.Label5})
            label->setForeColor(colors::White);
        PushButton* const buttons[] = {
            &c.CMD_CaricaMoneta, &c.cmd_print,      &c.cmdAnnulla,     &c.cmdCaricaMovimenti,
            &c.cmdAnteprima,     &c.cmdCassetto[0], &c.cmdCassetto[1], &c.cmdCassetto[2],
            &c.cmdCassetto[3],   &c.cmdConferma,    &c.PushButton1,    &c.cmdRecuperaFondoCassaPrecedente};
        for (auto* button : buttons)
            button->setOwnColors(true);
        for (auto* button : buttons)
            button->setBackColor(colors::DarkFace);
        for (auto* button : buttons)
            button->setForeColor(colors::White);
    });
}

} // namespace kova
