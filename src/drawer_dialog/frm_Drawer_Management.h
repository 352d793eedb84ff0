#pragma once
#include "drawer_dialog/drawer_controls.h"
#include "services/combo_multi_column.h"
#include "services/movement.h"
#include "services/parent_component.h"
#include "services/texts.h"
#include "services/window_lifetime.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kova {

/// The dialog in which a cashier records one movement after the other. The object lives as long as its
/// component; its controls come and go with each loading. It sends movements to the host through its
/// component and keeps none. Every procedure that can fail traps its failures under a label of the error log.
///
/// One source file per topic: start_up, catalogues, selection, entry, confirmation,
/// previous_float, coin_count, closing, movements_page, appearance, screen_aids, what_is_sent.
class frm_Drawer_Management {
  public:
    frm_Drawer_Management(ProcessState& process, ParentComponent& parent);
    ~frm_Drawer_Management();
    frm_Drawer_Management(const frm_Drawer_Management&) = delete;
    frm_Drawer_Management& operator=(const frm_Drawer_Management&) = delete;

    // What the component calls, in this order; the first loads the dialog.
    void set_button_Drawer();
    void SetSwName(const std::string& locSwName);
    void setColorMetroStyle();
    void PredisponiPerInserimentoFondoCassaIniziale();
    void RecuperaFondoCassaPrecedenteAttivo();
    /// Modality 0 returns at once, any other value when the dialog has closed. A dialog on the screen comes
    /// to the front; asked to be modal from inside one of its own handlers it returns at once all the same.
    void Show(std::int32_t modality);
    /// Closes the message window and the coin count, then the dialog.
    void AnnullaClick();

    /// To be called when an option changed on which the list depends; it is for the eyes, and never fails.
    void showWhetherListFits() noexcept;

    void ml_RuntimeSupport_LanguageChanged(std::int32_t LanguageID, const std::string& Language);

    [[nodiscard]] bool loaded() const { return lifetime_.loaded(); }
    /// Null while not loaded.
    [[nodiscard]] Window* window() { return lifetime_.window(); }

    // Fields; they keep their values while the dialog is unloaded.
    [[nodiscard]] std::int32_t idAttivitaFondoCassaIniziale() const { return idAttivitaFondoCassaIniziale_; }
    [[nodiscard]] const std::string& ChiaveInAttesa() const { return ChiaveInAttesa_; }
    [[nodiscard]] bool MetroStyleAttivo() const { return MetroStyleAttivo_; }
    [[nodiscard]] std::int32_t IndicePagamentoAziendale() const { return IndicePagamentoAziendale_; }
    [[nodiscard]] std::int32_t IndicePagamentoEstero() const { return IndicePagamentoEstero_; }
    /// Null before the payments were loaded for the first time.
    [[nodiscard]] const ComboMultiColumn* ElencoPagamenti() const { return ElencoPagamenti_.get(); }

  private:
    class Handler;
    enum class Unmarked { Stay, Follow }; ///< what becomes of a grid without a mark

    /// Runs `body` as a handler that works to its end with these controls, then tells the other dialogs.
    template <class Body>
    void handled(const std::shared_ptr<DrawerControls>& controls, const Body& body);
    void handlerEnded();

    // start_up.cpp
    /// The controls that it found or made; an event may have unloaded them since.
    std::shared_ptr<DrawerControls> ensureLoaded();
    void connectHandlers();
    void Form_Load();
    void layOutDoubleMovement();
    void showDrawersWhenConfigured();
    void chooseCurrency();
    void Form_Activate();
    void ApplyCaptions();
    // catalogues.cpp
    ComboMultiColumn& elencoPagamenti();
    void Load_Pagamenti(ButtonGrid& grid);
    void Load_Attivita();
    void Load_Valute();
    // selection.cpp
    void Pulsantiera_Attivita_buttonClick(const std::string& key);
    void Pulsantiera_Pagamenti_buttonClick(const std::string& key);
    void Pulsantiera_Pagamenti_Versamenti_buttonClick(const std::string& key);
    void Pulsantiera_Valuta_buttonClick(const std::string& key);
    void TimerAttivita_Timer();
    void TimerVersamenti_Timer();
    void AggiornaVariabiliSelezioneAttivita(const std::int32_t& id);
    void applyLater(const std::string& key, Timer& timer);
    void followSelection() noexcept;
    void showSelection(Unmarked unmarked) noexcept;
    // entry.cpp
    void Virtual_KeyPAD_Keyboard(const std::string& key);
    void txtVisore_KeyPress(char32_t& character);
    void txtNote_GotFocus();
    void cmdNascondiTastiera_Click();
    void cmdCassetto_Click(std::int16_t index);
    void latchDrawerButtons();
    [[nodiscard]] DecimalKey decimalKey() const;
    [[nodiscard]] std::string decimalMark() const; ///< what the decimal key enters
    // confirmation.cpp
    void cmdConferma_Click();
    bool SalvaMovimento();
    bool SalvaMovimentoDoppio();
    /// `field` is where it is to be mended; null where no field is.
    void refuse(LocalisedString reason, const Control* field);
    void emptyEntries();
    void reloadPayments();
    [[nodiscard]] bool savesPairs() const;
    [[nodiscard]] bool amountIsNumeric();
    [[nodiscard]] double amount();
    // what_is_sent.cpp: an aid must not cost a movement, so what shows one does not throw.
    void showEntry() noexcept; ///< what would be sent, and what is missing
    void showReadBack() noexcept;
    void showNeeds() noexcept;
    void stopPointing(const Control& touched) noexcept; ///< if it is what was refused
    [[nodiscard]] bool readsBack() const;               ///< whether host and machine want it
    [[nodiscard]] bool saysDirection() const;
    [[nodiscard]] bool begun() const; ///< something was entered, chosen or asked for
    void readBackAmount(ReadBack::Content& content);
    [[nodiscard]] std::vector<ReadBack::Line> linesToSend() const;
    [[nodiscard]] ReadBack::Part part(std::string text, const CaptionedControl& title) const;
    [[nodiscard]] std::string hint() const; ///< what contradicts itself; empty for nothing
    /// `payments` hold the payment's caption; `activity` is said when no button has one.
    [[nodiscard]] std::string noticeLine(const Movement& movement, const ButtonGrid& payments,
                                         const std::string& activity) noexcept;
    // screen_aids.cpp
    void connectScreenAids();
    void connectNotice();
    void goOn(const Control& touched) noexcept;
    void showAids() noexcept;
    void placeNotice() noexcept;
    /// Lines of `noticeLine`, one a movement.
    void showSaved(const std::vector<std::string>& lines) noexcept;
    /// `sent` are the lines of what the host took before the failure.
    void showNotSaved(const std::vector<std::string>& sent, const std::string& why) noexcept;
    void showServerSilent() noexcept;
    [[nodiscard]] bool tellsWhatWasSent() const;
    using Notice = std::vector<std::pair<Word, std::string>>;
    void show(Notice notice, PageNotice::Kind kind);
    [[nodiscard]] std::string noticeText() const;
    // closing.cpp
    void cmdAnnulla_Click();
    void ProceduraChiudi();
    void tmrAutoClose_Timer();
    void Unload();
    // previous_float.cpp
    void cmdRecuperaFondoCassaPrecedente_Click();
    // coin_count.cpp
    void cmd_CaricaMoneta_Click();
    void takeCountedAmounts(const frm_CaricaMoneta& coins);
    // movements_page.cpp
    void setupReportControl();
    void TabControl_SelectedChanged(int index);
    void cmdCaricaMovimenti_Click();
    void loadMovements();
    void cmd_print_Click();
    void cmdAnteprima_Click();

    /// Inside a handler those that it began with, whatever became of the dialog since; else the present ones.
    DrawerControls& controls();
    [[nodiscard]] ParentComponent& parent() const { return ParentComponent_; }
    [[nodiscard]] const ComponentOptions& options() const { return ParentComponent_.options(); }
    [[nodiscard]] std::string text(LocalisedString entry) const;

    ProcessState& process_;
    ParentComponent& ParentComponent_;
    WindowLifetime<DrawerControls> lifetime_;
    Handler* running_ = nullptr; ///< the innermost one of this dialog
    bool overtaken_ = false;     ///< another dialog changed the selection while a handler ran here
    std::int32_t idAttivitaFondoCassaIniziale_ = -1;
    std::string ChiaveInAttesa_;
    bool MetroStyleAttivo_ = false;
    std::int32_t IndicePagamentoAziendale_ = -1;
    std::int32_t IndicePagamentoEstero_ = -1;
    std::unique_ptr<ComboMultiColumn> ElencoPagamenti_;
    std::map<std::string, std::string> paymentCurrencies_;       ///< by the payments' keys; some have none
    std::pair<std::int32_t, std::string> automaticNote_{-1, ""}; ///< the last one, and its activity
    ScreenAids machineAids_;
    std::optional<DecimalKey> machineDecimalKey_;
    Notice notice_; ///< what was said last, in words to be had in another language
};

} // namespace kova
