#pragma once
#include "base/error.h"
#include "com/com_headers.h"

#include <exception>
#include <string>
#include <utility>

namespace kova::automation {

/// A failure with its source, as automation reports it: of an event handler of the host's, on its way back to
/// whoever raised the event.
class Failure : public Error {
  public:
    /// `code` is one of automation's; one of a script or of an old language becomes its own number.
    Failure(HRESULT code, std::string source, const std::string& description);
    [[nodiscard]] HRESULT code() const { return code_; }
    [[nodiscard]] const std::string& source() const { return source_; }

  private:
    HRESULT code_;
    std::string source_;
};

/// What a call of the host's came to, when the component threw: the code, and what to say of it.
struct Outcome {
    HRESULT code = S_OK;
    std::string source, description;
};

/// Runs the body; no exception leaves it.
template <class Body>
Outcome outcomeOf(const Body& body) noexcept;
/// Of the exception that is being handled.
Outcome currentOutcome() noexcept;

/// For callers through the function table: they find the details in the thread's error object.
HRESULT tellThread(const Outcome& outcome, const IID& interfaceId) noexcept;
/// For callers through `Invoke`. The texts are the caller's to free.
HRESULT tellCaller(const Outcome& outcome, EXCEPINFO* details) noexcept;

template <class Body>
Outcome outcomeOf(const Body& body) noexcept {
    try {
        body();
        return {};
    } catch (...) {
        return currentOutcome();
    }
}

} // namespace kova::automation
