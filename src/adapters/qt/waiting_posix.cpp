#include "adapters/qt/waiting.h"

namespace kova {

class SignBeside::Thread {};

SignBeside::SignBeside(WId, const std::optional<Scale>&,
                       const std::function<QString(std::chrono::seconds)>&) noexcept {}

SignBeside::~SignBeside() = default;

} // namespace kova
