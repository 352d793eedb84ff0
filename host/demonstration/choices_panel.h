#pragma once
#include "demonstration/point_of_sale.h"
#include "demonstration/texts.h"

#include <QScrollArea>

#include <vector>

class QButtonGroup;
class QGridLayout;
class QLabel;
class QLineEdit;

namespace kova {

class ChoiceBox;
class ToggleSwitch;

/// What the host hands to the component before it shows the dialog: till, operator, payment, currency, name
/// and the option switches.
class ChoicesPanel final : public QScrollArea {
  public:
    explicit ChoicesPanel(const ShopCatalogues& catalogues, QWidget* parent = nullptr);
    [[nodiscard]] Choices choices() const;
    void setLanguage(std::int32_t id);
    void setScale(double scale);

  private:
    struct Field {
        Caption caption;
        QLabel* title;
        QWidget* input;
    };
    struct Switch {
        Caption caption;
        const char* option;
        ToggleSwitch* input;
    };
    void addField(Caption which, QWidget* input, int row, int column, int columns = 1);
    QWidget* makeTills();
    void fillLists(const ShopCatalogues& catalogues);
    void addSwitches();

    // All owned by this widget.
    QGridLayout* fieldLayout_;
    QGridLayout* switchLayout_;
    QButtonGroup* tills_;
    ChoiceBox* user_;
    ChoiceBox* payment_;
    ChoiceBox* currency_;
    QLineEdit* softwareName_;
    std::vector<Field> fields_;
    std::vector<Switch> switches_;
};

} // namespace kova
