#pragma once
#include "coin_count/coin_controls.h"
#include "coin_count/coin_count.h"
#include "services/texts.h"
#include "services/window_lifetime.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kova {

/// The dialog in which a cashier counts coins and banknotes, in euro and in the company's currency. It is
/// modal over the movement dialog, which makes one for each count and takes the totals afterwards; its own
/// buttons only hide it. Owned by `ProcessState::coinDialog` and by the opening that waits for it. Loaded
/// once: an unloaded one is over, and the next count has one of its own.
class frm_CaricaMoneta {
  public:
    explicit frm_CaricaMoneta(ProcessState& process) : process_(process), count_(process) {}
    ~frm_CaricaMoneta();
    frm_CaricaMoneta(const frm_CaricaMoneta&) = delete;
    frm_CaricaMoneta& operator=(const frm_CaricaMoneta&) = delete;

    /// Makes the controls and runs the start-up; a dialog that was loaded before stays as it is.
    void load();
    /// The dark scheme.
    void setMetroStyle();
    /// Whether it says that a count is typed and not loaded.
    void sayNotLoaded(bool say) noexcept;
    /// Returns when the dialog has been hidden, true, or unloaded. Throws when it is on the screen already.
    bool showModal();
    /// Closes the dialog by other means than its buttons; no error when it is not loaded.
    void unload();
    void ml_RuntimeSupport_LanguageChanged(std::int32_t LanguageID, const std::string& Language);

    [[nodiscard]] double getImportoPrimaValuta() const { return count_.getImportoPrimaValuta(); }
    [[nodiscard]] double getImportoSecondaValuta() const { return count_.getImportoSecondaValuta(); }
    [[nodiscard]] const std::string& result() const { return result_; } ///< one of the two texts below
    static constexpr std::string_view NothingLoaded = "Nessun Carico";
    static constexpr std::string_view Loaded = "OK";
    /// The selected count field; -1 without one.
    [[nodiscard]] std::int32_t IndiceMoneta() const { return IndiceMoneta_; }

    [[nodiscard]] bool loaded() const { return lifetime_.loaded(); }
    /// Null while not loaded.
    [[nodiscard]] Window* window() { return lifetime_.window(); }

  private:
    // frm_CaricaMoneta.cpp
    void connectHandlers();
    void Form_Load();
    void greySecondCurrency();
    void ApplyCaptions();
    void hide();
    void showNotLoaded() noexcept;
    // counting.cpp
    void Form_KeyPress(char32_t character);
    void Virtual_KeyPAD_Keyboard(const std::string& key);
    void txtValuta_GotFocus(std::int32_t index);
    void FlatEdit_GotFocus();
    void CMD_Carica_Click();
    void CMD_cancella_Click();
    void CMD_Annulla_Click();
    void CMD_CaricaMoneta_Click();

    CoinControls& controls() { return *controls_; }
    [[nodiscard]] TextBox& field(std::int32_t index);
    [[nodiscard]] CoinCount::Counts counts();
    [[nodiscard]] std::string text(LocalisedString entry) const;

    ProcessState& process_;
    CoinCount count_;
    WindowLifetime<CoinControls> lifetime_{process_};
    std::shared_ptr<CoinControls> controls_; ///< kept when unloaded, for the handlers that still run
    bool saysNotLoaded_ = false;
    std::int32_t IndiceMoneta_ = -1;
    std::string result_{NothingLoaded};
};

} // namespace kova
