#pragma once
#include "base/error.h"
#include "kova_drawer_man_c.h"

#include <exception>
#include <string>
#include <string_view>

namespace kova::c_interface {

inline constexpr std::int32_t InvalidCall = 5;

/// A call that the interface itself refuses.
class Refusal : public Error {
  public:
    Refusal(kova_status status, const std::string& words);
    [[nodiscard]] kova_status status() const { return status_; }

  private:
    kova_status status_;
};

[[noreturn]] void refuseArgument(const char* words);

/// Records the exception that is being handled as the thread's last error.
kova_status currentStatus() noexcept;

/// Runs the body of one function; no exception leaves it.
template <class Body>
kova_status guarded(const Body& body) noexcept {
    try {
        body();
        return KOVA_OK;
    } catch (...) {
        return currentStatus();
    }
}

/// What a result is written to.
template <class Result>
Result& wanted(Result* result) {
    if (result == nullptr)
        refuseArgument("A pointer for a result is null");
    return *result;
}

/// A text of the host's. Throws when it is not UTF-8.
std::string textOf(const char* text);
/// For the host: the thread keeps it until it hands out the next one.
const char* handedOut(std::string text);

/// The words that the host's handler gave for its failure, which are forgotten then.
std::string takeWordsOfFailure();
void setWordsOfFailure(std::string words);

} // namespace kova::c_interface
