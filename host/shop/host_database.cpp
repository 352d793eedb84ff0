#include "shop/host_database.h"

#include "host_options.h"

namespace kova {

HostDatabase openHostDatabase(const HostOptions& options, const ServerOpener& openServer) {
    if (options.connection)
        return {std::nullopt, openServer(*options.connection)};
    auto database = SqliteHostDatabase::open(options.database);
    auto connection = database.connection();
    return {std::move(database), std::move(connection)};
}

} // namespace kova
