#pragma once
#include "adapters/qt/buttons.h"
#include "adapters/qt/look.h"
#include "screen/spoken_name.h"

#include <QLineEdit>
#include <QWidget>

#include <functional>
#include <vector>

namespace kova {

/// Keys under the rows of a list, for who has no keyboard. They type into the search field and take no focus.
class SearchBoard final : public QWidget {
  public:
    SearchBoard(QWidget& page, const QString& name, QLineEdit& field);
    static int height(const Scale& scale);
    void layOut(const QRect& place, const Scale& scale);
    void showWords(const Wording& words);
    std::function<void()> done; ///< the key that ends it

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Key {
        char32_t character;
        KeyButton* button;
    };
    void press(char32_t character);
    QLineEdit& field_;
    std::vector<std::vector<Key>> rows_;
};

/// What stands at the right of a list's group-by area: a field to search the list, and a button for its menu.
/// It lies on the page, beside the list, so that assistive technology finds it there.
class ReportGridTools final : public QWidget {
  public:
    struct Actions {
        std::function<void(const std::string&)> search;
        std::function<void()> touchField, openMenu;
        std::function<void()> focusMoved; ///< one of the parts has the keyboard now
        std::function<void()> leave;      ///< the keyboard is to go on to the list
    };
    ReportGridTools(QWidget& page, const QString& name, Actions actions);
    [[nodiscard]] QLineEdit& field() const { return *field_; }
    [[nodiscard]] QWidget& menuButton() const { return *menu_; }
    void layOut(const QRect& place, const Scale& scale);
    void showWords(const Wording& words);
    /// Without a word to anybody.
    void empty();
    /// Goes, and from now on says nothing.
    void detach();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool takeKey(QObject* part, int key);
    void placeField();
    Actions actions_;
    QLineEdit* field_;
    FaceButton* clear_;
    FaceButton* menu_;
};

} // namespace kova
