#pragma once
#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace kova::test {

/// Takes any bytes; what must hold of them whatever they are ends the process when it does not.
using FuzzTarget = void (*)(std::span<const std::uint8_t> bytes);

const std::map<std::string, FuzzTarget>& fuzzTargets();

} // namespace kova::test
