#include "shop/host_database.h"

#include "host_options.h"

namespace kova {

HostDatabase openHostDatabase(const HostOptions& options, DatabaseProvider& servers) {
    if (options.connection)
        return {std::nullopt, servers.open(*options.connection)};
    auto database = SqliteHostDatabase::open(options.database);
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

} // namespace kova
