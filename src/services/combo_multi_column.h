#pragma once
#include "services/process_state.h"

#include <array>
#include <string>
#include <vector>

namespace kova {

/// A table of texts with columns 0 to 2 and rows from 0; column 0 is never written. No operation fails: a
/// step that cannot be done is skipped.
class ComboMultiColumn {
  public:
    explicit ComboMultiColumn(ProcessState& process);

    /// Leaves one empty row.
    void Clear();
    /// Makes `indice` the last row, dropping rows above it, and writes columns 1 and 2. A negative index does
    /// nothing.
    void AddItem(const std::int32_t& indice, const std::string& Valore1, const std::string& valore2);
    /// Empty when row or column is out of range.
    [[nodiscard]] std::string GetItem(const std::int16_t& NumeroColonna, const std::int32_t& indice) const;
    /// Column 2 of the first row whose column 1 is exactly `ValColonna1`; without one `risultato` stays as it
    /// was.
    bool GetColonna2_fromColonna1(const std::string& ValColonna1, std::string& risultato) const;
    [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }

  private:
    std::vector<std::array<std::string, 3>> rows_;
    Connection ml_RuntimeSupport_; ///< the language-change notifier
};

} // namespace kova
