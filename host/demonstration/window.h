#pragma once
#include "demonstration/point_of_sale.h"
#include "demonstration/texts.h"
#include "demonstration/window_parts.h"

#include <QWidget>

#include <optional>
#include <utility>
#include <vector>

class QFrame;
class QLabel;
class QPushButton;

namespace kova {

struct DayDocument;
class ChoicesPanel;
class EventList;
class MovementList;

/// The demonstration's window: choices, the button that opens the dialog, the events as they arrive and the
/// rows that they became.
class DemonstrationWindow final : public QWidget {
  public:
    /// `shop` outlives the window, which takes its events. Throws DatabaseError when its tables cannot be
    /// read.
    explicit DemonstrationWindow(PointOfSale& shop);

  protected:
    void resizeEvent(QResizeEvent* event) override;

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

    void openDialog();
    void onReceived(const ReceivedEvent& event);
    void readMovements();
    void handOutDay(const ReceivedEvent& event);
    [[nodiscard]] std::optional<DayDocument> makeDocument(const std::string& date);
    void showDocument(const DayDocument& document, bool preview);
    void report(Failure failure);
    void showBanner();
    void chooseLanguage(std::int32_t id, const QString& name);
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
    Introduction* introduction_;
    QPushButton* open_;
    LanguageButtons* languages_;
    std::vector<std::pair<Caption, QLabel*>> labels_;
    std::vector<QLayout*> wideLayouts_; ///< with wide gaps between their parts
    std::vector<QLayout*> cardLayouts_;
    QLayout* header_ = nullptr;
    QLayout* workplace_ = nullptr;

    LanguageButtons strip_{LanguageButtons::Place::Strip}; ///< while the dialog is open
    Notice notice_;
};

} // namespace kova
