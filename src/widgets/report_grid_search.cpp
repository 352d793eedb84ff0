#include "base/ascii_text.h"
#include "base/folded_text.h"
#include "widgets/report_grid.h"

#include <algorithm>

namespace kova {

Gesture ReportGrid::search(std::string_view text) {
    const Gesture reached = reach();
    std::string folded = foldedText(trimmed(text));
    if (reached != Gesture::Done || folded == searched_)
        return reached;
    searched_ = std::move(folded);
    arrange();
    return reached;
}

namespace {

/// Which texts of a table have another one in them.
class TextSearch {
  public:
    TextSearch(const TextTable& table, const std::string& folded) : table_(table), wanted_(folded) {}
    bool isIn(TextArena::Place place) {
        return known_.of(place, [&] { return isIn(table_.text(place)); });
    }
    bool isIn(std::string_view text) {
        folded_.clear();
        appendFolded(folded_, text);
        return folded_.find(wanted_) != std::string::npos;
    }

  private:
    const TextTable& table_;
    const std::string& wanted_;
    std::string folded_;
    KnownByPlace<bool> known_{false};
};

/// No amount has another letter than that of its exponent.
bool mayBeInAmount(std::string_view folded) {
    return std::ranges::none_of(folded, [](char c) { return c >= 'a' && c <= 'z' && c != 'e'; });
}

} // namespace

/// An amount can be found as it is held and as it is shown.
std::vector<std::int32_t> ReportGrid::foundRecords() const {
    TextSearch search(table_, searched_);
    const auto amounts = mayBeInAmount(searched_) ? amountColumn() : std::nullopt;
    const auto currencies = currencyColumn();
    const auto shown = [&](std::size_t record) {
        return shownAmount(item(record, *amounts),
                           currencies ? item(record, *currencies) : std::string_view());
    };
    const auto isFound = [&](std::size_t record) {
        for (std::size_t column = 0; column < columns_.size(); ++column)
            if (search.isIn(table_.place(record, column)))
                return true;
        return amounts && search.isIn(shown(record));
    };
    std::vector<std::int32_t> found;
    for (std::size_t record = 0; record < populated_; ++record)
        if (isFound(record))
            found.push_back(static_cast<std::int32_t>(record));
    return found;
}

} // namespace kova
