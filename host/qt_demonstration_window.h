#pragma once
#include "qt_demonstration_texts.h"
#include "qt_notice.h"
#include "qt_point_of_sale.h"

#include <QWidget>

#include <optional>
#include <utility>
#include <vector>

class QButtonGroup;
class QFrame;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace kova {

class ChoicesPanel;
class EventList;
class MovementList;

/// The demonstration's window: choices, the button that opens the dialog, the events as they arrive and the
/// rows that they became.
class DemonstrationWindow final : public QWidget {
  public:
    /// `shop` outlives the window. Throws DatabaseError when its tables cannot be read.
    explicit DemonstrationWindow(PointOfSale& shop);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    struct Failure {
        Caption message;
        QString reason;
    };
    QWidget* makeHeader();
    QWidget* makeWorkplace();
    QWidget* makeActions();
    QFrame* makeCard(QWidget* content, std::optional<Caption> title = {});
    QLabel* makeCaptioned(const char* objectName, Caption which);
    QPushButton* makeShowButton(const char* objectName, Caption which, PointOfSale::Modality modality);

    void onReceived(const ReceivedEvent& event);
    void readMovements();
    void report(Failure failure);
    void showBanner();
    void chooseLanguage(std::int32_t id);
    void setLanguage(std::int32_t id);
    void setScale(double scale);

    PointOfSale& shop_;
    ShopCatalogues catalogues_;
    std::int32_t languageId_ = 0;
    double scale_ = 0;
    std::optional<Failure> failure_;

    // Owned by this widget.
    ChoicesPanel* choices_;
    EventList* events_;
    MovementList* movements_;
    QPushButton* banner_;
    QButtonGroup* languages_;
    std::vector<std::pair<Caption, QLabel*>> labels_;
    std::vector<std::pair<Caption, QPushButton*>> buttons_;
    std::vector<QLayout*> roomyLayouts_; ///< with gaps between and around their parts
    std::vector<QLayout*> cardLayouts_;
    QLayout* header_ = nullptr;

    Notice notice_;
    Connection receiving_;
};

} // namespace kova
