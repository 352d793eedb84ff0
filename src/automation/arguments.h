#pragma once
#include "com/com_headers.h"
#include "component/type_description.h"
#include "component/variant.h"

#include <optional>
#include <span>
#include <vector>

namespace kova::automation {

/// The arguments of one call through `Invoke`, in the order of declaration: brought to the declared types,
/// whatever the caller gave, and afterwards written back where the caller gave a reference.
class Arguments {
  public:
    Arguments(const DISPPARAMS& given, std::span<const type_description::Parameter> declared, LCID locale)
        : given_(given), declared_(declared), locale_(locale) {}

    /// Returns an error code of automation: a wrong number, an unknown name, a missing argument, a value of
    /// the wrong type or range. `wrong` gets the place of the argument in the caller's list.
    HRESULT read(UINT* wrong);
    [[nodiscard]] std::span<Variant> values() { return values_; }
    /// What changed since `read`.
    void writeBack() const;

  private:
    HRESULT place();
    const DISPPARAMS& given_;
    std::span<const type_description::Parameter> declared_;
    LCID locale_;
    std::vector<VARIANT*> sources_;
    std::vector<Variant> values_, before_;
};

/// Puts a value of the component into an empty VARIANT. Throws std::bad_alloc.
void assign(VARIANT& target, const Variant& value);

} // namespace kova::automation
