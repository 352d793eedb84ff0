#pragma once
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

/// The exit status when what was asked for could not be carried out.
inline constexpr int NotCarriedOut = 2;

enum class HostInterface { Headless, Qt };

struct SurfaceSize {
    int width, height; ///< pixels
};

/// What the command line asks for.
struct HostOptions {
    std::optional<std::string> script; ///< a file, or "-" for standard input; without it a cashier works
    HostInterface userInterface = HostInterface::Qt;
    std::string database = "sample"; ///< "empty", "sample" or a file
    std::optional<std::string> connection;
    std::optional<std::string> logFolder;
    /// Of a script's largest window; its design size without it.
    std::optional<SurfaceSize> size;
    bool throughAutomation = false;      ///< how a script's host talks to its components
    std::optional<std::string> pictures; ///< folder for those of a played scenario
    bool help = false;
};

class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the words behind the program's name. Throws UsageError.
HostOptions hostOptions(const std::vector<std::string>& words);
std::string_view usage();

} // namespace kova
