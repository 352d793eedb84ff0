#pragma once
#include "widgets/control.h"

#include <vector>

namespace kova {

/// A read-only list of texts with column headers and a group-by area.
class ReportGrid : public Control {
  public:
    struct Column {
        std::string caption;
        int width; ///< initial width in characters
        bool resizable;
    };
    using Record = std::vector<std::string>;

    using Control::Control;
    void accept(ControlVisitor& visitor) override;

    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
    [[nodiscard]] const std::vector<Record>& records() const { return records_; }

    [[nodiscard]] const std::string& emptyText() const { return emptyText_; } ///< shown without records
    void setEmptyText(const std::string& text) { assign(emptyText_, text, Property::Text); }
    [[nodiscard]] const std::string& groupHint() const { return groupHint_; } ///< in the empty group-by area
    void setGroupHint(const std::string& text) { assign(groupHint_, text, Property::Text); }
    [[nodiscard]] const std::string& sortPrefix() const {
        return sortPrefix_;
    } ///< before the sort column's name
    void setSortPrefix(const std::string& text) { assign(sortPrefix_, text, Property::Text); }
    [[nodiscard]] const Font& headerFont() const { return headerFont_; }
    void setHeaderFont(const Font& font) { assign(headerFont_, font, Property::Text); }

  private:
    std::vector<Column> columns_;
    std::vector<Record> records_;
    std::string emptyText_, groupHint_, sortPrefix_;
    Font headerFont_;
};

} // namespace kova
