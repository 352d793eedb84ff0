#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace kova {

class ProcessState;

/// The arithmetic of a coin count in two columns of count fields: the euro (fields 0 to 14) and the company's
/// currency where that is another one (fields 15 to 29). It knows texts and totals, and no window.
class CoinCount {
  public:
    static constexpr std::int16_t FieldCount = 30;
    static constexpr std::int16_t FirstOfSecondCurrency = 15;
    using Counts = std::array<std::string, FieldCount>; ///< pieces, as the fields show them

    /// What one piece of each field is worth, in currency units.
    static const std::array<double, FieldCount> Denominations;

    /// `process` and the table outlive the count. A table that is too short for a field is a fault, which
    /// Coeff records.
    explicit CoinCount(ProcessState& process, std::span<const double> denominations = Denominations)
        : process_(process), denominations_(denominations) {}

    /// The value of one piece of a field; 0 for an index that no field has. Never fails.
    [[nodiscard]] double Coeff(const std::int16_t& index) const;

    /// Adds up what was entered so far. The euro total starts afresh; the second one goes on from where it
    /// was, so that each load adds the whole second column once more.
    void load(const Counts& counts);
    /// Adds up both columns from nothing.
    void confirm(const Counts& counts);
    // Both skip texts that are no numbers, and throw Error 6 where a sum leaves the range of a double; the
    // totals then hold what had been added before.
    void clear();

    [[nodiscard]] double getImportoPrimaValuta() const { return ImportoPrimaValuta_; } ///< not rounded
    [[nodiscard]] double getImportoSecondaValuta() const { return ImportoSecondaValuta_; }
    /// The totals for people.
    [[nodiscard]] std::string primaValuta() const;
    [[nodiscard]] std::string secondaValuta() const;
    /// What one piece of a field is, as in "€ 0,50"; the company's currency stands close to its number.
    [[nodiscard]] std::string caption(const std::int16_t& index) const;

  private:
    void add(const Counts& counts, std::int16_t first, double& total) const;

    ProcessState& process_;
    std::span<const double> denominations_;
    double ImportoPrimaValuta_ = 0;
    double ImportoSecondaValuta_ = 0;
};

} // namespace kova
