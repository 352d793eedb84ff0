// Plays a scenario like kova-host, but with a server between the component and the embedded database: the
// host writes to the database itself, and the component reads through ODBC.

#include "host_options.h"
#include "kova-test-server/tds_server.h"
#include "player/scenario_player.h"
#include "shop/shop_database.h"

#include <iostream>
#include <optional>

int main(int count, char** arguments) {
    std::optional<kova::tds::TdsServer> server;
    const auto throughServer = [&](const kova::HostOptions& options, const kova::ServerOpener& openServer) {
        kova::HostDatabase database = kova::openHostDatabase(options, openServer);
        server.emplace(database.connection);
        database.connection = openServer(server->connectionString());
        return database;
    };
    try {
        const auto options = kova::hostOptions({arguments + 1, arguments + count});
        return kova::runScript(options, std::cout, std::cerr, throughServer);
    } catch (const std::exception& error) {
        std::cerr << "odbc_player: " << error.what() << '\n';
        return 2;
    }
}
