#include "component/type_description.h"
#include "test_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace kova::test {
namespace {

namespace td = type_description;
using Kind = td::MemberKind;

std::vector<std::string> namesInOrder(int td::Member::*order, Kind kind) {
    std::vector<td::Member> members(td::members().begin(), td::members().end());
    std::ranges::stable_sort(members, {}, order);
    std::vector<std::string> names;
    for (const auto& member : members)
        if (member.kind == kind)
            names.emplace_back(member.name);
    return names;
}

TEST(TypeDescription, SlotsAndDispatchIdsAreTheFrozenOnes) {
    ASSERT_EQ(td::members().size(), 32U);
    std::set<int> slots, ids;
    for (const auto& member : td::members()) {
        slots.insert(member.slot);
        ids.insert(member.dispatchId);
    }
    EXPECT_EQ(slots.size(), 32U);
    EXPECT_EQ(*slots.rbegin(), 31);
    EXPECT_EQ(ids.size(), 22U);
    EXPECT_EQ(namesInOrder(&td::Member::slot, Kind::Method),
              (std::vector<std::string>{"Stampa", "SalvaPagamento", "Show", "Inizializza", "Anteprima",
                                        "SetSoftwareName", "ApriCassetto", "DiscardForm",
                                        "InizializzaByConnString"}));
    EXPECT_EQ(namesInOrder(&td::Member::slot, Kind::PropertyRead),
              (std::vector<std::string>{
                  "AttivaVisualizzazionePrecontiDefinitivi", "idCassa", "ChiusuraAutomatica",
                  "InserimentoAutomatico", "idPagamentoPredefinito", "idUtente", "UsaSoloValutaAziendale",
                  "ValutaAziendale", "VisualizzaMovimentiUtenteLoggato", "DoppioInserimentoObbligatorio"}));
    EXPECT_EQ(namesInOrder(&td::Member::dispatchId, Kind::PropertyWrite),
              (std::vector<std::string>{"ActiveColorMetroStyle", "AttivaVisualizzazionePrecontiDefinitivi",
                                        "idCassa", "ValutaAziendale", "UsaSoloValutaAziendale", "idUtente",
                                        "idPagamentoPredefinito", "InserimentoAutomatico",
                                        "ChiusuraAutomatica", "VisualizzaMovimentiUtenteLoggato",
                                        "DoppioInserimentoObbligatorio", "AttivaRecuperaFondoCassaPrecedente",
                                        "PredisponiInserimentoFondoCassaIniziale"}));
    EXPECT_EQ(td::events()[0].parameters.size(), 7U);
    EXPECT_EQ(td::enumeration().size(), 5U);
}

TEST(LateBinding, ReachesEveryMemberByNameAndById) {
    World world;
    auto& component = *world.component;
    for (const auto& member : td::members()) {
        if (member.kind == Kind::PropertyRead) {
            EXPECT_EQ(component.get(member.name), component.get(member.dispatchId)) << member.name;
        }
        if (member.kind != Kind::PropertyWrite)
            continue;
        const bool text = member.parameters[0].type == td::Type::String;
        const bool flag = member.parameters[0].type == td::Type::Boolean;
        const Variant value = text ? Variant("CHF") : flag ? Variant(true) : Variant(std::int32_t{42});
        component.set(member.dispatchId, value);
        if (td::find(member.name, Kind::PropertyRead) != nullptr) {
            EXPECT_EQ(component.get(member.name), value) << member.name;
        } else {
            EXPECT_EQ(errorNumber([&] { component.get(member.name); }), 438) << member.name;
        }
    }
    EXPECT_EQ(component.get("IDCASSA"), Variant(std::int32_t{42}));
}

TEST(LateBinding, ConvertsArgumentsAndRefusesWhatDoesNotFit) {
    World world;
    auto& component = *world.component;
    component.set("idCassa", Variant("7"));
    EXPECT_EQ(component.idCassa(), 7);
    EXPECT_EQ(errorNumber([&] { component.set("idCassa", Variant("seven")); }), 13);
    EXPECT_EQ(errorNumber([&] { component.set("idCassa", Variant(1e10)); }), 6);
    EXPECT_EQ(errorNumber([&] { component.set("Show", Variant(1)); }), 438);
    EXPECT_EQ(errorNumber([&] { component.invoke("Nothing"); }), 438);
    EXPECT_EQ(errorNumber([&] { component.invoke("Stampa"); }), 450);
    std::vector<Variant> none{Variant()};
    EXPECT_EQ(errorNumber([&] { component.invoke("Inizializza", none); }), 13);
    EXPECT_EQ(component.idCassa(), 7);
}

TEST(Events, PassArgumentsByReferenceThroughEverySinkInOrder) {
    struct Doubling final : EventSink {
        void SalvaPagamento(std::int32_t&, double& importo, std::string& Valuta, std::string&, std::int16_t&,
                            std::int32_t&, bool&) override {
            importo *= 2;
            Valuta += "!";
        }
        void Stampa(std::string& day) override { day += "+"; }
        void Anteprima(std::string&) override {}
        void ApriCassetto() override {}
    } first, second;
    World world;
    const auto one = world.component->connect(first);
    auto two = world.component->connect(second);
    std::vector<Variant> arguments{std::int32_t{1}, 1.5, std::string("€"), std::string("n"), std::int16_t{2},
                                   std::int32_t{3}, true};
    world.component->invoke("salvapagamento", arguments);
    EXPECT_EQ(std::get<double>(arguments[1]), 6);
    EXPECT_EQ(std::get<std::string>(arguments[2]), "€!!");
    EXPECT_EQ(world.sink.movements.at(0).importo, 1.5) << "the sink that was first saw the value as sent";
    two.disconnect();
    std::vector<Variant> day{std::string("d")};
    world.component->invoke("Stampa", day);
    EXPECT_EQ(std::get<std::string>(day[0]), "d+");
}

} // namespace
} // namespace kova::test
