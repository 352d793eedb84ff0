#include "component/type_description.h"

#include "base/ascii_text.h"
#include "services/activity_kinds.h"

#include <algorithm>

namespace kova::type_description {
namespace {

constexpr Parameter dataOp[] = {{"DataOP", Type::String}};
constexpr Parameter dataOperazione[] = {{"DataOperazione", Type::String}};
constexpr Parameter movement[] = {{"idpagamento", Type::Int32}, {"importo", Type::Double},
                                  {"Valuta", Type::String},     {"note", Type::String},
                                  {"cassetto", Type::Int16},    {"tipoIncasso", Type::Int32},
                                  {"isIncasso", Type::Boolean}};
constexpr Parameter showMethod[] = {{"method", Type::Int32, true}};
constexpr Parameter softwareName[] = {{"SwName", Type::String}};
constexpr Parameter connectionString[] = {{"locConnString", Type::String}};
constexpr Parameter hostConnection[] = {{"ConnessioneDB", Type::Connection}};
constexpr Parameter booleanValue[] = {{"value", Type::Boolean}};
constexpr Parameter int32Value[] = {{"value", Type::Int32}};
constexpr Parameter stringValue[] = {{"value", Type::String}};

// clang-format off
// Name, kind, slot, dispatch id, parameters, result: frozen.
constexpr Member memberTable[] = {
    {"ApriCassetto", MemberKind::Method, 9, 16, {}},
    {"Stampa", MemberKind::Method, 0, 1, dataOp},
    {"Anteprima", MemberKind::Method, 4, 6, dataOp},
    {"SalvaPagamento", MemberKind::Method, 1, 2, movement},
    {"AttivaRecuperaFondoCassaPrecedente", MemberKind::PropertyWrite, 29, 20, booleanValue},
    {"PredisponiInserimentoFondoCassaIniziale", MemberKind::PropertyWrite, 30, 21, booleanValue},
    {"Show", MemberKind::Method, 2, 3, showMethod, Type::String},
    {"SetSoftwareName", MemberKind::Method, 5, 7, softwareName},
    {"AttivaVisualizzazionePrecontiDefinitivi", MemberKind::PropertyWrite, 7, 8, booleanValue},
    {"AttivaVisualizzazionePrecontiDefinitivi", MemberKind::PropertyRead, 10, 8, {}, Type::Boolean},
    {"idCassa", MemberKind::PropertyWrite, 8, 9, int32Value},
    {"idCassa", MemberKind::PropertyRead, 11, 9, {}, Type::Int32},
    {"ChiusuraAutomatica", MemberKind::PropertyWrite, 12, 15, booleanValue},
    {"ChiusuraAutomatica", MemberKind::PropertyRead, 13, 15, {}, Type::Boolean},
    {"InserimentoAutomatico", MemberKind::PropertyWrite, 14, 14, booleanValue},
    {"InserimentoAutomatico", MemberKind::PropertyRead, 15, 14, {}, Type::Boolean},
    {"DoppioInserimentoObbligatorio", MemberKind::PropertyWrite, 26, 18, booleanValue},
    {"DoppioInserimentoObbligatorio", MemberKind::PropertyRead, 27, 18, {}, Type::Boolean},
    {"idPagamentoPredefinito", MemberKind::PropertyWrite, 16, 13, int32Value},
    {"idPagamentoPredefinito", MemberKind::PropertyRead, 17, 13, {}, Type::Int32},
    {"idUtente", MemberKind::PropertyWrite, 18, 12, int32Value},
    {"idUtente", MemberKind::PropertyRead, 19, 12, {}, Type::Int32},
    {"UsaSoloValutaAziendale", MemberKind::PropertyWrite, 20, 11, booleanValue},
    {"UsaSoloValutaAziendale", MemberKind::PropertyRead, 21, 11, {}, Type::Boolean},
    {"VisualizzaMovimentiUtenteLoggato", MemberKind::PropertyWrite, 24, 17, booleanValue},
    {"VisualizzaMovimentiUtenteLoggato", MemberKind::PropertyRead, 25, 17, {}, Type::Boolean},
    {"ValutaAziendale", MemberKind::PropertyWrite, 22, 10, stringValue},
    {"ValutaAziendale", MemberKind::PropertyRead, 23, 10, {}, Type::String},
    {"InizializzaByConnString", MemberKind::Method, 31, 22, connectionString},
    {"Inizializza", MemberKind::Method, 3, 4, hostConnection},
    {"ActiveColorMetroStyle", MemberKind::PropertyWrite, 6, 5, booleanValue},
    {"DiscardForm", MemberKind::Method, 28, 19, {}},
};
// clang-format on

constexpr Event eventTable[] = {
    {"SalvaPagamento", 1, movement},
    {"Stampa", 2, dataOperazione},
    {"Anteprima", 3, dataOperazione},
    {"ApriCassetto", 4, {}},
};

constexpr EnumerationValue enumerationTable[] = {
    {"kDMTR_FondoCassaIniziale", static_cast<std::int32_t>(kDMTypeRow::kDMTR_FondoCassaIniziale)},
    {"kDMTR_AmmancoConteggioCassetto", static_cast<std::int32_t>(kDMTypeRow::kDMTR_AmmancoConteggioCassetto)},
    {"kDMTR_EsuberoConteggioCassetto", static_cast<std::int32_t>(kDMTypeRow::kDMTR_EsuberoConteggioCassetto)},
    {"kDMTR_PrelievoPerVersamento", static_cast<std::int32_t>(kDMTypeRow::kDMTR_PrelievoPerVersamento)},
    {"kDMTR_FondoCassaFinale", static_cast<std::int32_t>(kDMTypeRow::kDMTR_FondoCassaFinale)},
};

constexpr Library theLibrary{
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
};

template <class Condition>
const Member* findIf(Condition condition) {
    const auto* found = std::ranges::find_if(memberTable, condition);
    return found == std::end(memberTable) ? nullptr : found;
}

} // namespace

const Library& library() {
    return theLibrary;
}

std::span<const Member> members() {
    return memberTable;
}

std::span<const Event> events() {
    return eventTable;
}

std::span<const EnumerationValue> enumeration() {
    return enumerationTable;
}

const Member* find(std::string_view name, MemberKind kind) {
    return findIf(
        [&](const Member& member) { return member.kind == kind && equalIgnoringCase(member.name, name); });
}

const Member* find(int dispatchId, MemberKind kind) {
    return findIf(
        [&](const Member& member) { return member.kind == kind && member.dispatchId == dispatchId; });
}

} // namespace kova::type_description
