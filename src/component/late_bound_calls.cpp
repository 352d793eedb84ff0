#include "base/numbered_errors.h"
#include "component/component_state.h"
#include "component/type_description.h"
#include "services/conversions.h"

#include <map>

// Late-bound calls: the published table decides what exists and which types it takes, the table of
// implementations below says what each member does with arguments of those types.

namespace kova {
namespace {

using type_description::Member;
using type_description::MemberKind;
using type_description::Type;
using Component = cls_Kova_Drawer_Man;
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

using Connected = std::shared_ptr<DatabaseConnection>;
using Key = std::pair<std::string_view, MemberKind>;

const std::map<Key, Implementation>& implementations() {
    constexpr auto Method = MemberKind::Method;
    constexpr auto Read = MemberKind::PropertyRead;
    constexpr auto Write = MemberKind::PropertyWrite;
    using C = Component;
    static const std::map<Key, Implementation> table{
        {{"ApriCassetto", Method}, calls<&C::ApriCassetto>},
        {{"Stampa", Method}, raisesText<&C::Stampa>},
        {{"Anteprima", Method}, raisesText<&C::Anteprima>},
        {{"SalvaPagamento", Method}, save},
        {{"Show", Method}, show},
        {{"SetSoftwareName", Method}, writes<std::string, &C::SetSoftwareName>},
        {{"InizializzaByConnString", Method}, writes<std::string, &C::InizializzaByConnString>},
        {{"Inizializza", Method}, writes<Connected, &C::Inizializza>},
        {{"DiscardForm", Method}, calls<&C::DiscardForm>},
        {{"AttivaRecuperaFondoCassaPrecedente", Write}, writes<bool, &C::AttivaRecuperaFondoCassaPrecedente>},
        {{"PredisponiInserimentoFondoCassaIniziale", Write},
         writes<bool, &C::PredisponiInserimentoFondoCassaIniziale>},
        {{"ActiveColorMetroStyle", Write}, writes<bool, &C::ActiveColorMetroStyle>},
        {{"AttivaVisualizzazionePrecontiDefinitivi", Write},
         writes<bool, &C::AttivaVisualizzazionePrecontiDefinitivi>},
        {{"AttivaVisualizzazionePrecontiDefinitivi", Read},
         reads<bool, &C::AttivaVisualizzazionePrecontiDefinitivi>},
        {{"idCassa", Write}, writes<std::int32_t, &C::idCassa>},
        {{"idCassa", Read}, reads<std::int32_t, &C::idCassa>},
        {{"ChiusuraAutomatica", Write}, writes<bool, &C::ChiusuraAutomatica>},
        {{"ChiusuraAutomatica", Read}, reads<bool, &C::ChiusuraAutomatica>},
        {{"InserimentoAutomatico", Write}, writes<bool, &C::InserimentoAutomatico>},
        {{"InserimentoAutomatico", Read}, reads<bool, &C::InserimentoAutomatico>},
        {{"DoppioInserimentoObbligatorio", Write}, writes<bool, &C::DoppioInserimentoObbligatorio>},
        {{"DoppioInserimentoObbligatorio", Read}, reads<bool, &C::DoppioInserimentoObbligatorio>},
        {{"idPagamentoPredefinito", Write}, writes<std::int32_t, &C::idPagamentoPredefinito>},
        {{"idPagamentoPredefinito", Read}, reads<std::int32_t, &C::idPagamentoPredefinito>},
        {{"idUtente", Write}, writes<std::int32_t, &C::idUtente>},
        {{"idUtente", Read}, reads<std::int32_t, &C::idUtente>},
        {{"UsaSoloValutaAziendale", Write}, writes<bool, &C::UsaSoloValutaAziendale>},
        {{"UsaSoloValutaAziendale", Read}, reads<bool, &C::UsaSoloValutaAziendale>},
        {{"VisualizzaMovimentiUtenteLoggato", Write}, writes<bool, &C::VisualizzaMovimentiUtenteLoggato>},
        {{"VisualizzaMovimentiUtenteLoggato", Read}, reads<bool, &C::VisualizzaMovimentiUtenteLoggato>},
        {{"ValutaAziendale", Write}, writes<std::string, &C::ValutaAziendale>},
        {{"ValutaAziendale", Read}, readCurrency},
    };
    return table;
}

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

const Member& require(const Member* member) {
    if (member == nullptr)
        throw noSuchMember();
    return *member;
}

Variant call(Component& component, const Member& member, Arguments arguments,
             const RegionalSettings& regional) {
    const auto& parameters = member.parameters;
    const bool missing = arguments.size() < parameters.size() && !parameters[arguments.size()].optional;
    if (missing || arguments.size() > parameters.size())
        throw wrongArgumentCount();
    for (std::size_t i = 0; i < arguments.size(); ++i)
        arguments[i] = coerced(arguments[i], parameters[i].type, regional);
    return implementations().at({member.name, member.kind})(component, arguments);
}

} // namespace

Variant cls_Kova_Drawer_Man::get(std::string_view name) {
    const HostCall admission = state_->admitted("get", CallKind::Operation);
    const auto* member = type_description::find(name, MemberKind::PropertyRead);
    return call(*this, require(member), {}, state_->process().platform.regional);
}

Variant cls_Kova_Drawer_Man::get(int dispatchId) {
    const HostCall admission = state_->admitted("get", CallKind::Operation);
    const auto* member = type_description::find(dispatchId, MemberKind::PropertyRead);
    return call(*this, require(member), {}, state_->process().platform.regional);
}

void cls_Kova_Drawer_Man::set(std::string_view name, const Variant& value) {
    const HostCall admission = state_->admitted("set", CallKind::Operation);
    Variant argument = value;
    const auto* member = type_description::find(name, MemberKind::PropertyWrite);
    call(*this, require(member), {&argument, 1}, state_->process().platform.regional);
}

void cls_Kova_Drawer_Man::set(int dispatchId, const Variant& value) {
    const HostCall admission = state_->admitted("set", CallKind::Operation);
    Variant argument = value;
    const auto* member = type_description::find(dispatchId, MemberKind::PropertyWrite);
    call(*this, require(member), {&argument, 1}, state_->process().platform.regional);
}

Variant cls_Kova_Drawer_Man::invoke(std::string_view name, std::span<Variant> arguments) {
    const HostCall admission = state_->admitted("invoke", CallKind::Operation);
    const auto* member = type_description::find(name, MemberKind::Method);
    return call(*this, require(member), arguments, state_->process().platform.regional);
}

Variant cls_Kova_Drawer_Man::invoke(int dispatchId, std::span<Variant> arguments) {
    const HostCall admission = state_->admitted("invoke", CallKind::Operation);
    const auto* member = type_description::find(dispatchId, MemberKind::Method);
    return call(*this, require(member), arguments, state_->process().platform.regional);
}

} // namespace kova
