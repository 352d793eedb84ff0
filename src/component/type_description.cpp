#include "component/type_description.h"

#include "base/ascii_text.h"
#include "base/numbered_errors.h"
#include "component/component_state.h"
#include "services/activity_kinds.h"
#include "services/conversions.h"

#include <algorithm>
#include <array>

// One table says of each member what hosts see of it and what it does: types and number of the arguments of a
// late-bound call are checked by the first, and the second then gets them as it needs them.

namespace kova {
namespace {

using type_description::Alias;
using type_description::EnumerationValue;
using type_description::Event;
using type_description::Library;
using type_description::Member;
using type_description::MemberKind;
using type_description::Parameter;
using type_description::Type;
using Component = cls_Kova_Drawer_Man;
using Connected = std::shared_ptr<DatabaseConnection>;
using Arguments = std::span<Variant>;
using Implementation = Variant (*)(Component&, Arguments);

template <class T>
T& argument(Arguments arguments, std::size_t index) {
    return std::get<T>(arguments[index]);
}

template <class T, T (Component::*read)() const>
Variant reads(Component& component, Arguments) {
    return (component.*read)();
}

template <class T, void (Component::*write)(const T&)>
Variant writes(Component& component, Arguments arguments) {
    (component.*write)(argument<T>(arguments, 0));
    return {};
}

Variant save(Component& component, Arguments a) {
    component.SalvaPagamento(argument<std::int32_t>(a, 0), argument<double>(a, 1),
                             argument<std::string>(a, 2), argument<std::string>(a, 3),
                             argument<std::int16_t>(a, 4), argument<std::int32_t>(a, 5),
                             argument<bool>(a, 6));
    return {};
}

Variant readCurrency(Component& component, Arguments) {
    return component.ValutaAziendale();
}

template <void (Component::*method)(std::string&)>
Variant raisesText(Component& component, Arguments arguments) {
    (component.*method)(argument<std::string>(arguments, 0));
    return {};
}

template <void (Component::*method)()>
Variant calls(Component& component, Arguments) {
    (component.*method)();
    return {};
}

Variant show(Component& component, Arguments arguments) {
    return arguments.empty() ? component.Show() : component.Show(argument<std::int32_t>(arguments, 0));
}

constexpr Parameter DataOpParameter[] = {{"DataOP", Type::String}};
constexpr Parameter DataOperazioneParameter[] = {{"DataOperazione", Type::String}};
constexpr Parameter MovementParameters[] = {{"idpagamento", Type::Int32}, {"importo", Type::Double},
                                            {"Valuta", Type::String},     {"note", Type::String},
                                            {"cassetto", Type::Int16},    {"tipoIncasso", Type::Int32},
                                            {"isIncasso", Type::Boolean}};
constexpr Parameter ShowMethod[] = {{"method", Type::Int32, true}};
constexpr Parameter SoftwareNameParameter[] = {{"SwName", Type::String}};
constexpr Parameter ConnectionStringParameter[] = {{"locConnString", Type::String}};
constexpr Parameter HostConnectionParameter[] = {{"ConnessioneDB", Type::Connection}};
constexpr Parameter BooleanValue[] = {{"value", Type::Boolean}};
constexpr Parameter Int32Value[] = {{"value", Type::Int32}};
constexpr Parameter StringValue[] = {{"value", Type::String}};

struct MemberRow {
    Member member;
    Implementation implementation;
};

constexpr auto Method = MemberKind::Method;
constexpr auto Read = MemberKind::PropertyRead;
constexpr auto Write = MemberKind::PropertyWrite;
using C = Component;

// clang-format off
// Name, kind, slot, dispatch id, parameters, result: frozen.
constexpr MemberRow MemberRows[] = {
    {{"ApriCassetto", Method, 9, 16, {}}, calls<&C::ApriCassetto>},
    {{"Stampa", Method, 0, 1, DataOpParameter}, raisesText<&C::Stampa>},
    {{"Anteprima", Method, 4, 6, DataOpParameter}, raisesText<&C::Anteprima>},
    {{"SalvaPagamento", Method, 1, 2, MovementParameters}, save},
    {{"AttivaRecuperaFondoCassaPrecedente", Write, 29, 20, BooleanValue}, writes<bool, &C::AttivaRecuperaFondoCassaPrecedente>},
    {{"PredisponiInserimentoFondoCassaIniziale", Write, 30, 21, BooleanValue}, writes<bool, &C::PredisponiInserimentoFondoCassaIniziale>},
    {{"Show", Method, 2, 3, ShowMethod, Type::String}, show},
    {{"SetSoftwareName", Method, 5, 7, SoftwareNameParameter}, writes<std::string, &C::SetSoftwareName>},
    {{"AttivaVisualizzazionePrecontiDefinitivi", Write, 7, 8, BooleanValue}, writes<bool, &C::AttivaVisualizzazionePrecontiDefinitivi>},
    {{"AttivaVisualizzazionePrecontiDefinitivi", Read, 10, 8, {}, Type::Boolean}, reads<bool, &C::AttivaVisualizzazionePrecontiDefinitivi>},
    {{"idCassa", Write, 8, 9, Int32Value}, writes<std::int32_t, &C::idCassa>},
    {{"idCassa", Read, 11, 9, {}, Type::Int32}, reads<std::int32_t, &C::idCassa>},
    {{"ChiusuraAutomatica", Write, 12, 15, BooleanValue}, writes<bool, &C::ChiusuraAutomatica>},
    {{"ChiusuraAutomatica", Read, 13, 15, {}, Type::Boolean}, reads<bool, &C::ChiusuraAutomatica>},
    {{"InserimentoAutomatico", Write, 14, 14, BooleanValue}, writes<bool, &C::InserimentoAutomatico>},
    {{"InserimentoAutomatico", Read, 15, 14, {}, Type::Boolean}, reads<bool, &C::InserimentoAutomatico>},
    {{"DoppioInserimentoObbligatorio", Write, 26, 18, BooleanValue}, writes<bool, &C::DoppioInserimentoObbligatorio>},
    {{"DoppioInserimentoObbligatorio", Read, 27, 18, {}, Type::Boolean}, reads<bool, &C::DoppioInserimentoObbligatorio>},
    {{"idPagamentoPredefinito", Write, 16, 13, Int32Value}, writes<std::int32_t, &C::idPagamentoPredefinito>},
    {{"idPagamentoPredefinito", Read, 17, 13, {}, Type::Int32}, reads<std::int32_t, &C::idPagamentoPredefinito>},
    {{"idUtente", Write, 18, 12, Int32Value}, writes<std::int32_t, &C::idUtente>},
    {{"idUtente", Read, 19, 12, {}, Type::Int32}, reads<std::int32_t, &C::idUtente>},
    {{"UsaSoloValutaAziendale", Write, 20, 11, BooleanValue}, writes<bool, &C::UsaSoloValutaAziendale>},
    {{"UsaSoloValutaAziendale", Read, 21, 11, {}, Type::Boolean}, reads<bool, &C::UsaSoloValutaAziendale>},
    {{"VisualizzaMovimentiUtenteLoggato", Write, 24, 17, BooleanValue}, writes<bool, &C::VisualizzaMovimentiUtenteLoggato>},
    {{"VisualizzaMovimentiUtenteLoggato", Read, 25, 17, {}, Type::Boolean}, reads<bool, &C::VisualizzaMovimentiUtenteLoggato>},
    {{"ValutaAziendale", Write, 22, 10, StringValue}, writes<std::string, &C::ValutaAziendale>},
    {{"ValutaAziendale", Read, 23, 10, {}, Type::String}, readCurrency},
    {{"InizializzaByConnString", Method, 31, 22, ConnectionStringParameter}, writes<std::string, &C::InizializzaByConnString>},
    {{"Inizializza", Method, 3, 4, HostConnectionParameter}, writes<Connected, &C::Inizializza>},
    {{"ActiveColorMetroStyle", Write, 6, 5, BooleanValue}, writes<bool, &C::ActiveColorMetroStyle>},
    {{"DiscardForm", Method, 28, 19, {}}, calls<&C::DiscardForm>},
};
// clang-format on

constexpr auto MemberTable = [] {
    std::array<Member, std::size(MemberRows)> members{};
    std::ranges::transform(MemberRows, members.begin(), &MemberRow::member);
    return members;
}();

/// The members by dispatch id and kind, null where the interface has none.
constexpr auto MembersById = [] {
    std::array<std::array<const Member*, 3>, std::size(MemberRows)> members{};
    for (const Member& member : MemberTable)
        members[static_cast<std::size_t>(member.dispatchId)][static_cast<std::size_t>(member.kind)] = &member;
    return members;
}();

constexpr Event EventTable[] = {
    {"SalvaPagamento", 1, MovementParameters},
    {"Stampa", 2, DataOperazioneParameter},
    {"Anteprima", 3, DataOperazioneParameter},
    {"ApriCassetto", 4, {}},
};

constexpr EnumerationValue EnumerationTable[] = {
    {"kDMTR_FondoCassaIniziale", static_cast<std::int32_t>(kDMTypeRow::kDMTR_FondoCassaIniziale)},
    {"kDMTR_AmmancoConteggioCassetto", static_cast<std::int32_t>(kDMTypeRow::kDMTR_AmmancoConteggioCassetto)},
    {"kDMTR_EsuberoConteggioCassetto", static_cast<std::int32_t>(kDMTypeRow::kDMTR_EsuberoConteggioCassetto)},
    {"kDMTR_PrelievoPerVersamento", static_cast<std::int32_t>(kDMTypeRow::kDMTR_PrelievoPerVersamento)},
    {"kDMTR_FondoCassaFinale", static_cast<std::int32_t>(kDMTypeRow::kDMTR_FondoCassaFinale)},
};

constexpr Alias AliasTable[] = {
    {"_cls_Kova_Drawer_Man_v1", "4AB2FAE7-13AA-4370-AC1D-36640DD71B2C"},
    {"_cls_Kova_Drawer_Man_v2", "A7F4810B-D677-4969-A78B-63A2AC797F76"},
    {"_cls_Kova_Drawer_Man_v3", "A10574DE-B127-487A-B6FE-75034719045C"},
    {"_cls_Kova_Drawer_Man_v4", "E07906E1-3115-4373-AF55-AF60EF6881A5"},
    {"_cls_Kova_Drawer_Man_v5", "028C71C4-5841-4692-AD3E-B0D6C8B0CC54"},
    {"_cls_Kova_Drawer_Man_v6", "E10FCC42-64F7-434A-8F58-207ED1F3E1F5"},
    {"_cls_Kova_Drawer_Man_v7", "4CD37477-880E-4F38-A9F5-BA0C5FEB2024"},
    {"_cls_Kova_Drawer_Man_v8", "22D0341C-EFB9-4B9E-B18B-5C9F23926155"},
    {"_cls_Kova_Drawer_Man_v9", "A1F04A71-7269-4097-9281-2A18FA498056"},
    {"_cls_Kova_Drawer_Man_v10", "FD045276-69F2-4B1F-820E-F777C1F92B7C"},
};

constexpr Library TheLibrary{
    .name = "Kova_Drawer_Man",
    .version = "4.10",
    .identifier = "2A5E1F2E-93F4-432A-9759-8CBEFB240204",
    .locale = 0x409,
    .coclass = "cls_Kova_Drawer_Man",
    .programmaticId = "Kova_Drawer_Man.cls_Kova_Drawer_Man",
    .coclassIdentifier = "8C3084B3-62BE-470E-BFEC-778A0EDAAF72",
    .interfaceName = "_cls_Kova_Drawer_Man",
    .interfaceIdentifier = "D64C5F23-C893-4C7C-AB76-07B87DA107EE",
    .eventInterfaceName = "__cls_Kova_Drawer_Man",
    .eventInterfaceIdentifier = "7FB8BCEC-157A-4CEE-8FC2-CB7A3539810F",
    .enumerationName = "kDMTypeRow",
    .enumerationIdentifier = "04657BE0-8AD8-4D72-96A8-DF5DC9220E95",
    .aliases = AliasTable,
};

std::string asString(const Variant& value, const RegionalSettings& regional) {
    if (const auto* text = std::get_if<std::string>(&value))
        return *text;
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? "True" : "False";
    if (const auto* number = std::get_if<double>(&value))
        return toText(*number, regional);
    if (const auto* number = std::get_if<std::int32_t>(&value))
        return std::to_string(*number);
    if (const auto* number = std::get_if<std::int16_t>(&value))
        return std::to_string(*number);
    throw typeMismatch();
}

double asNumber(const Variant& value, const RegionalSettings& regional) {
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag ? -1 : 0;
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    return toDouble(asString(value, regional), regional);
}

Variant coerced(const Variant& value, Type type, const RegionalSettings& regional) {
    switch (type) {
    case Type::Int16:
        return toInt16(asNumber(value, regional));
    case Type::Int32:
        return toInt32(asNumber(value, regional));
    case Type::Double:
        return asNumber(value, regional);
    case Type::Boolean:
        if (const auto* text = std::get_if<std::string>(&value);
            text != nullptr && (*text == "True" || *text == "False"))
            return *text == "True";
        return asNumber(value, regional) != 0;
    case Type::String:
        return asString(value, regional);
    case Type::Connection:
        if (std::holds_alternative<std::shared_ptr<DatabaseConnection>>(value))
            return value;
        break;
    case Type::None:
        break;
    }
    throw typeMismatch();
}

/// Null for a member that the interface does not have.
Variant call(Component& component, const Member* member, Arguments arguments,
             const RegionalSettings& regional) {
    if (member == nullptr)
        throw noSuchMember();
    const auto& parameters = member->parameters;
    const bool missing = arguments.size() < parameters.size() && !parameters[arguments.size()].optional;
    if (missing || arguments.size() > parameters.size())
        throw wrongArgumentCount();
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = coerced(arguments[i], parameters[i].type, regional);
    return MemberRows[member - MemberTable.data()].implementation(component, arguments);
}

} // namespace

namespace type_description {

const Library& library() {
    return TheLibrary;
}

std::span<const Member> members() {
    return MemberTable;
}

std::span<const Event> events() {
    return EventTable;
}

std::span<const EnumerationValue> enumeration() {
    return EnumerationTable;
}

const Member* find(std::string_view name, MemberKind kind) {
    const auto* const found = std::ranges::find_if(MemberTable, [&](const Member& member) {
        return member.kind == kind && equalIgnoringCase(member.name, name);
    });
    return found == MemberTable.end() ? nullptr : found;
}

const Member* find(int dispatchId, MemberKind kind) {
    const auto id = static_cast<std::size_t>(dispatchId);
    return id < MembersById.size() ? MembersById[id][static_cast<std::size_t>(kind)] : nullptr;
}

} // namespace type_description

Variant cls_Kova_Drawer_Man::get(std::string_view name) {
    const HostCall admission = state_->admitted("get", CallKind::Operation);
    return call(*this, type_description::find(name, Read), {}, state_->process().platform.regional);
}

Variant cls_Kova_Drawer_Man::get(int dispatchId) {
    const HostCall admission = state_->admitted("get", CallKind::Operation);
    return call(*this, type_description::find(dispatchId, Read), {}, state_->process().platform.regional);
}

void cls_Kova_Drawer_Man::set(std::string_view name, const Variant& value) {
    const HostCall admission = state_->admitted("set", CallKind::Operation);
    Variant argument = value;
    call(*this, type_description::find(name, Write), {&argument, 1}, state_->process().platform.regional);
}

void cls_Kova_Drawer_Man::set(int dispatchId, const Variant& value) {
    const HostCall admission = state_->admitted("set", CallKind::Operation);
    Variant argument = value;
    call(*this, type_description::find(dispatchId, Write), {&argument, 1},
         state_->process().platform.regional);
}

Variant cls_Kova_Drawer_Man::invoke(std::string_view name, std::span<Variant> arguments) {
    const HostCall admission = state_->admitted("invoke", CallKind::Operation);
    return call(*this, type_description::find(name, Method), arguments, state_->process().platform.regional);
}

Variant cls_Kova_Drawer_Man::invoke(int dispatchId, std::span<Variant> arguments) {
    const HostCall admission = state_->admitted("invoke", CallKind::Operation);
    return call(*this, type_description::find(dispatchId, Method), arguments,
                state_->process().platform.regional);
}

} // namespace kova
