#include "services/combo_multi_column.h"

namespace kova {

ComboMultiColumn::ComboMultiColumn(ProcessState& process)
    : ml_RuntimeSupport_(process.platform.languageRuntime.languageChanged.connect(
          [&process](std::int32_t id, const std::string& name) { SetLanguage(process, id, name); })) {}

void ComboMultiColumn::Clear() {
    rows_.assign(1, {});
}

void ComboMultiColumn::AddItem(const std::int32_t& indice, const std::string& Valore1,
                               const std::string& valore2) {
    if (indice < 0)
        return;
    rows_.resize(static_cast<std::size_t>(indice) + 1);
    rows_.back()[1] = Valore1;
    rows_.back()[2] = valore2;
}

std::string ComboMultiColumn::GetItem(const std::int16_t& NumeroColonna, const std::int32_t& indice) const {
    if (NumeroColonna < 0 || NumeroColonna > 2 || indice < 0 ||
        static_cast<std::size_t>(indice) >= rows_.size())
        return {};
    return rows_[static_cast<std::size_t>(indice)][static_cast<std::size_t>(NumeroColonna)];
}

bool ComboMultiColumn::GetColonna2_fromColonna1(const std::string& ValColonna1,
                                                std::string& risultato) const {
    for (const auto& row : rows_) {
        if (row[1] == ValColonna1) {
            risultato = row[2];
            return true;
        }
    }
    return false;
}

} // namespace kova
