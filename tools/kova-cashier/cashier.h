#pragma once
#include <QGenericPlugin>

namespace kova {

/// What Qt asks for the cashier.
class CashierPlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "cashier.json")

  public:
    /// For the scenario in that file.
    QObject* create(const QString& key, const QString& file) override;
};

} // namespace kova
