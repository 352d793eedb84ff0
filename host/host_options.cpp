#include "host_options.h"

#include <charconv>

namespace kova {
namespace {

HostInterface interfaceNamed(const std::string& name) {
    if (name != "headless" && name != "qt")
        throw UsageError("neither headless nor qt: " + name);
    return name == "qt" ? HostInterface::Qt : HostInterface::Headless;
}

SurfaceSize sizeFrom(const std::string& word) {
    SurfaceSize size{};
    const char* const end = word.data() + word.size();
    const auto width = std::from_chars(word.data(), end, size.width);
    if (width.ec == std::errc() && width.ptr != end && *width.ptr == 'x')
        if (const auto height = std::from_chars(width.ptr + 1, end, size.height);
            height.ec == std::errc() && height.ptr == end && size.width > 0 && size.height > 0)
            return size;
    throw UsageError("no size WIDTHxHEIGHT: " + word);
}

} // namespace

HostOptions hostOptions(const std::vector<std::string>& words) {
    HostOptions options;
    std::optional<std::string> userInterface, database, size, through;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& name = words[i];
        if (name == "--help" || name == "-h") {
            options.help = true;
            return options;
        }
        if (name != "--script" && name != "--ui" && name != "--database" && name != "--connection" &&
            name != "--log-folder" && name != "--size" && name != "--pictures" && name != "--through")
            throw UsageError("unknown option: " + name);
        if (++i == words.size())
            throw UsageError("a value is missing behind " + name);
        auto& target = name == "--script"       ? options.script
                       : name == "--ui"         ? userInterface
                       : name == "--database"   ? database
                       : name == "--connection" ? options.connection
                       : name == "--size"       ? size
                       : name == "--through"    ? through
                       : name == "--pictures"   ? options.pictures
                                                : options.logFolder;
        target = words[i];
    }
    if (database && options.connection)
        throw UsageError("--database and --connection exclude each other");
    options.userInterface = interfaceNamed(userInterface.value_or(options.script ? "headless" : "qt"));
    options.database = database.value_or(options.script ? "empty" : "sample");
    if (through && *through != "automation")
        throw UsageError("not automation: " + *through);
    options.throughAutomation = through.has_value();
    if (size)
        options.size = sizeFrom(*size);
    return options;
}

std::string_view usage() {
    return "usage: kova-host [--script FILE] [--ui headless|qt] [--database empty|sample|FILE]\n"
           "                 [--connection TEXT] [--log-folder DIR] [--size WIDTHxHEIGHT]\n"
           "                 [--pictures DIR] [--through automation]\n"
           "\n"
           "Without --script a window opens in which a cashier can work with the component.\n"
           "\n"
           "  --script FILE      plays a scenario (- for standard input) and prints its trace\n"
           "  --ui NAME          headless (the default with --script) or qt\n"
           "  --database WHAT    embedded database: empty (the default with --script), sample\n"
           "                     (the default without), or a file\n"
           "  --connection TEXT  a connection string instead of the embedded database\n"
           "  --log-folder DIR   folder of the component's log file; without it a script\n"
           "                     writes none\n"
           "  --size WxH         pixels of the windows that a script draws where there is no\n"
           "                     screen; their design size without it\n"
           "  --through automation  a script's host talks to the component as Windows' automation\n"
           "                     hosts do, by its registered name\n"
           "  --pictures DIR     with --ui qt, what is seen at each touch, as pictures\n"
           "\n"
           "Exit status: 0 when all went well, 2 when something could not be carried out.\n";
}

} // namespace kova
