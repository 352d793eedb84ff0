#pragma once
#include "base/date_time.h"
#include "com/com_headers.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kova::com {

/// Failures that scripts and old languages know by a number of 16 bits, which is the lower half of the code.
inline constexpr HRESULT NumberedErrors = static_cast<HRESULT>(0x800A0000);
/// The number of one of those, or the code of any other failure.
inline std::int32_t errorNumber(HRESULT code) {
    return (code & ~0xFFFF) == NumberedErrors ? code & 0xFFFF : code;
}

/// UTF-16 of a UTF-8 text; a byte that is no UTF-8 gives U+FFFD.
std::wstring wide(std::string_view text);
/// UTF-8 of a UTF-16 text; half of a pair without its other half gives U+FFFD.
std::string narrow(std::wstring_view text);
/// UTF-8 of a BSTR, null and embedded zeros included.
std::string narrow(BSTR text);
/// A BSTR that the caller frees. Throws std::bad_alloc.
BSTR makeBstr(std::string_view text);
BSTR makeBstr(std::wstring_view text);

/// The UTF-8 of a BSTR that is somebody else's variable, which gets what became of the text in the end.
class ReferredText {
  public:
    explicit ReferredText(BSTR& variable) : text(narrow(variable)), variable_(variable), before_(text) {}
    ReferredText(const ReferredText&) = delete;
    ReferredText& operator=(const ReferredText&) = delete;
    ~ReferredText();
    std::string text;

  private:
    BSTR& variable_;
    const std::string before_;
};

/// The time to the millisecond, fractions of it cut off; nothing for a number that is no date.
std::optional<DateTime> dateTimeOf(DATE date);

/// An argument that the caller leaves out.
struct LeftOut {};

/// A VARIANT that is cleared in the end.
class Value {
  public:
    Value() { VariantInit(&variant_); }
    explicit Value(std::string_view text) : Value() {
        variant_.vt = VT_BSTR;
        variant_.bstrVal = makeBstr(text);
    }
    explicit Value(std::int32_t number) : Value() {
        variant_.vt = VT_I4;
        variant_.lVal = number;
    }
    /// Adds a reference.
    explicit Value(IDispatch* object) : Value() {
        variant_.vt = VT_DISPATCH;
        variant_.pdispVal = object;
        if (object != nullptr)
            object->AddRef();
    }
    explicit Value(DateTime time);
    explicit Value(LeftOut /*argument*/) : Value() {
        variant_.vt = VT_ERROR;
        variant_.scode = DISP_E_PARAMNOTFOUND;
    }
    Value(Value&& other) noexcept : variant_(std::exchange(other.variant_, VARIANT{})) {}
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    ~Value() { VariantClear(&variant_); }
    VARIANT* operator&() { return &variant_; }
    VARIANT* operator->() { return &variant_; }
    VARIANT& operator*() { return variant_; }

  private:
    VARIANT variant_;
};

} // namespace kova::com
