// kova-test-server: a SQL Server to try a host's ODBC set-up against, where there is none.
#include "commands.h"
#include "scenario/scenario_language.h"
#include "shop/shop_database.h"
#include "tds_server.h"

#include <unistd.h>

#include <charconv>
#include <iostream>
#include <map>
#include <set>

namespace {

using namespace kova;

const char* const usage =
    "usage: kova-test-server [--port N] [--database empty|sample|FILE] [--user NAME]\n"
    "                        [--password TEXT] [--tds-version 7.1|7.2|7.3|7.4]\n"
    "\n"
    "Answers ODBC drivers as a SQL Server does, on the loopback interface and from an\n"
    "embedded database, and prints the connection string to use. For trying out; it\n"
    "encrypts nothing.\n"
    "\n"
    "  --port N           TCP port; 0 (the default) for a free one\n"
    "  --database WHAT    the demonstration shop without movements or with a month of\n"
    "                     them (sample, the default), or an SQLite file\n"
    "  --user, --password of the one login; till and secret without them\n"
    "  --tds-version V    of the printed connection string; 7.4 without it\n"
    "\n"
    "Faults on request, a line each on standard input; after its end the server goes on\n"
    "until a signal ends it. Words with blanks stand in double quotes; what has been\n"
    "carried out is answered with ok:\n"
    "\n";

class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

using Options = std::map<std::string, std::string, std::less<>>;

Options optionsFrom(const std::vector<std::string>& words) {
    Options options{{"--port", "0"},
                    {"--database", "sample"},
                    {"--user", "till"},
                    {"--password", "secret"},
                    {"--tds-version", "7.4"}};
    for (std::size_t i = 0; i < words.size(); i += 2) {
        const auto option = options.find(words[i]);
        if (option == options.end())
            throw UsageError("unknown option: " + words[i]);
        if (i + 1 == words.size())
            throw UsageError("a value is missing behind " + words[i]);
        option->second = words[i + 1];
    }
    return options;
}

tds::Access accessFrom(const Options& options) {
    tds::Access access{options.at("--user"), options.at("--password"), options.at("--tds-version")};
    if (!std::set<std::string>{"7.1", "7.2", "7.3", "7.4"}.contains(access.version))
        throw UsageError("no version of TDS that is spoken here: " + access.version);
    const std::string& port = options.at("--port");
    const auto read = std::from_chars(port.data(), port.data() + port.size(), access.port);
    if (read.ec != std::errc() || read.ptr != port.data() + port.size())
        throw UsageError("no port: " + port);
    return access;
}

void carryOutCommands(std::istream& input, tds::TdsServer& server) {
    for (std::string line; std::getline(input, line);) {
        try {
            if (!tds::carryOut(line, server))
                return;
            std::cout << "ok" << std::endl;
        } catch (const ScenarioError& error) {
            std::cerr << "kova-test-server: " << error.what() << '\n';
        }
    }
    pause();
}

int serve(const Options& options) {
    const auto shop = ShopDatabase::open(options.at("--database"));
    tds::TdsServer server(shop.connection(), accessFrom(options));
    std::cout << server.connectionString() << std::endl;
    carryOutCommands(std::cin, server);
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    if (words == std::vector<std::string>{"--help"} || words == std::vector<std::string>{"-h"}) {
        std::cout << usage << tds::commandsHelp();
        return 0;
    }
    try {
        return serve(optionsFrom(words));
    } catch (const UsageError& error) {
        std::cerr << "kova-test-server: " << error.what() << "\n\n" << usage << tds::commandsHelp();
    } catch (const std::exception& error) {
        std::cerr << "kova-test-server: " << error.what() << '\n';
    }
    return 2;
}
