#pragma once
#include <QPointF>
#include <QtGlobal>

class QEvent;
class QObject;

namespace kova {

/// Finds the second touch of a panel that bounces: down again, within 40 ms of going up, at the same spot of
/// the same widget. A finger needs more than 60 ms to leave the glass and come back, so that no double digit
/// and no double touch meant as one is lost. Events without a time are never taken for bounced ones.
class BounceFilter {
  public:
    static constexpr quint64 WindowMilliseconds = 40;
    static constexpr double Reach = 20; ///< pixels that a bounced touch may lie beside the first

    /// Whether the event belongs to a bounced touch, whose release goes with its press.
    bool swallows(const QObject& target, const QEvent& event);

  private:
    enum class Phase { Down, Up, Other };
    struct Touch {
        const QObject* target = nullptr; ///< only compared
        QPointF place;
        quint64 time = 0; ///< milliseconds
        Phase phase = Phase::Other;
    };
    static Touch read(const QObject& target, const QEvent& event);
    Touch up_;
    bool swallowing_ = false;
};

} // namespace kova
