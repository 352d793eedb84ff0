#pragma once
#include <chrono>

namespace kova {

/// Wall-clock time of the host, without a zone; milliseconds are the finest unit that the shops' tables hold.
using DateTime = std::chrono::local_time<std::chrono::milliseconds>;

} // namespace kova
