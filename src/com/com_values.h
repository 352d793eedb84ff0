#pragma once
#include "com/com_headers.h"

#include <string>
#include <string_view>

namespace kova::com {

/// UTF-16 of a UTF-8 text; a byte that is no UTF-8 gives U+FFFD.
std::wstring wide(std::string_view text);
/// UTF-8 of a UTF-16 text; half of a pair without its other half gives U+FFFD.
std::string narrow(std::wstring_view text);
/// UTF-8 of a BSTR, null and embedded zeros included.
std::string narrow(BSTR text);
/// A BSTR that the caller frees. Throws std::bad_alloc.
BSTR makeBstr(std::string_view text);

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

/// A VARIANT that is cleared in the end.
class Value {
  public:
    Value() { VariantInit(&variant_); }
    explicit Value(std::string_view text) : Value() {
        variant_.vt = VT_BSTR;
        variant_.bstrVal = makeBstr(text);
    }
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
