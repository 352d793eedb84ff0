#include "adapters/system/own_folder.h"

#include <dlfcn.h>

#include <filesystem>

namespace kova {

std::string ownFolder() {
    static const char inThisFile = 0;
    Dl_info info{};
    if (dladdr(&inThisFile, &info) == 0 || info.dli_fname == nullptr)
        return ".";
    std::error_code failed;
    const auto file = std::filesystem::canonical(info.dli_fname, failed);
    return failed ? "." : file.parent_path().string();
}

} // namespace kova
