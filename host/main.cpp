#include "adapters/system/machine.h"
#include "demonstration/demonstration.h"
#include "host_options.h"
#include "player/scenario_player.h"

#include <cstdlib>
#include <iostream>

namespace {

int run(const kova::HostOptions& options) {
    if (options.help) {
        std::cout << kova::usage();
        return 0;
    }
    if (options.script)
        return kova::runScript(options, std::cout, std::cerr);
#ifdef KOVA_WITH_QT
    // Qt itself would end the process, with a message for programmers.
    if (!kova::hasScreen() && std::getenv("QT_QPA_PLATFORM") == nullptr) {
        std::cerr << "kova-host: there is no display; use --script\n";
        return kova::NotCarriedOut;
    }
    return kova::runDemonstration(options);
#else
    std::cerr << "kova-host: this build has no windows; use --script\n";
    return 2;
#endif
}

} // namespace

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    const auto console = kova::utf8Console();
    try {
        return run(kova::hostOptions(kova::programArguments(count, arguments)));
    } catch (const kova::UsageError& error) {
        std::cerr << "kova-host: " << error.what() << "\n\n" << kova::usage();
    } catch (const std::exception& error) {
        std::cerr << "kova-host: " << error.what() << '\n';
    }
    return 2;
}
