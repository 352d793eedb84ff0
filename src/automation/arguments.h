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
    Arguments(const DISPPARAMS& given, const type_description::Member& member, LCID locale)
        : given_(given), declared_(member.parameters),
          writesProperty_(member.kind == type_description::MemberKind::PropertyWrite), locale_(locale) {}

    /// Returns an error code of automation: a wrong number, an unknown name, a missing argument, a value of
    /// the wrong type or range, a reference to nothing. `wrong`, which may be null, gets the place of the
    /// argument in the caller's list.
    HRESULT read(UINT* wrong);
    [[nodiscard]] std::span<Variant> values() { return values_; }
    /// What changed since `read`.
    void writeBack() const;

  private:
    HRESULT place(UINT& wrong);
    const DISPPARAMS& given_;
    const std::span<const type_description::Parameter> declared_;
    const bool writesProperty_;
    LCID locale_;
    std::vector<VARIANT*> sources_;
    std::vector<Variant> values_, before_;
};

/// How automation calls a type of the component's.
VARTYPE variantType(type_description::Type type);
/// Puts a value of the component into an empty VARIANT. Throws std::bad_alloc.
void assign(VARIANT& target, const Variant& value);

} // namespace kova::automation
