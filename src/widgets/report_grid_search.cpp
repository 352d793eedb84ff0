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

/// An amount can be found as it is held and as it is shown.
void ReportGrid::foldTexts() {
    const auto amounts = amountColumn();
    foldedEnds_.reserve(populated_);
    for (std::size_t record = 0; record < populated_; ++record) {
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            appendFolded(folded_, item(record, column));
            folded_ += '\n';
            if (column == amounts) {
                appendFolded(folded_, shown(record, column));
                folded_ += '\n';
            }
        }
        foldedEnds_.push_back(folded_.size());
    }
}

std::vector<std::int32_t> ReportGrid::foundRecords() {
    if (foldedEnds_.size() != populated_)
        foldTexts();
    std::vector<std::int32_t> found;
    auto end = foldedEnds_.begin();
    for (std::size_t at = folded_.find(searched_); at != std::string::npos;
         at = folded_.find(searched_, *end)) {
        end = std::upper_bound(end, foldedEnds_.end(), at);
        found.push_back(static_cast<std::int32_t>(end - foldedEnds_.begin()));
    }
    return found;
}

} // namespace kova
