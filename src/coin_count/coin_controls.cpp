#include "coin_count/coin_controls.h"

#include <utility>

namespace kova {
namespace {

const Font Entry{"Tahoma", 18, false};
const Font Denomination{"Tahoma", 14, true}; // what the cashier must see before loading a count
const Font Action{"Tahoma", 10, false};
const Font MainAction{"Tahoma", 11, true};
const Font RowLabel{"Tahoma", 11, false};
const Font Heading{"Tahoma", 11, true};
const Font Count{"Tahoma", 12, false};
const Font Total{"Tahoma", 11, true};

constexpr int SecondColumn = 720; // twips from the left
constexpr int EuroColumn = 1920;
constexpr int LastRow = 15; // rows from "1000", number 0, to "0.01"
constexpr int TotalTop = 6600;

constexpr int rowTop(int row) {
    return 720 + 360 * row;
}

Rect labelPlace(int top) {
    return {0, top, 705, 375};
}

Rect cell(int column, int top) {
    return {column, top, 1095, 375};
}

/// The rows that `Label2` names, by its index.
constexpr std::array<std::pair<int, const char*>, 14> NamedRows{{{0, "1000"},
                                                                 {2, "200"},
                                                                 {3, "100"},
                                                                 {4, "50"},
                                                                 {5, "20"},
                                                                 {6, "10"},
                                                                 {7, "5"},
                                                                 {9, "1"},
                                                                 {10, "0.50"},
                                                                 {11, "0.20"},
                                                                 {12, "0.10"},
                                                                 {13, "0.05"},
                                                                 {14, "0.02"},
                                                                 {15, "0.01"}}};

Label rowLabel(GroupFrame& frame, int index) {
    const auto position = static_cast<std::size_t>(index);
    const bool total = position == NamedRows.size();
    const int top = total ? TotalTop : rowTop(NamedRows.at(position).first);
    return {{&frame, "Label2", labelPlace(top), index},
            total ? "Tot." : NamedRows.at(position).second,
            RowLabel,
            Alignment::Right};
}

template <std::size_t... I>
std::array<Label, sizeof...(I)> rowLabels(GroupFrame& frame, std::index_sequence<I...>) {
    return {{rowLabel(frame, static_cast<int>(I))...}};
}

/// The euro has no 1000, the second currency no 0.01: the columns stand one row apart.
TextBox countField(GroupFrame& frame, int index) {
    const bool euro = index < CoinCount::FirstOfSecondCurrency;
    const int row = euro ? index + 1 : index - CoinCount::FirstOfSecondCurrency;
    return {{&frame, "txtValuta", cell(euro ? EuroColumn : SecondColumn, rowTop(row)), index},
            TextBox::Lines::Single,
            Count,
            Alignment::Right};
}

template <std::size_t... I>
std::array<TextBox, sizeof...(I)> countFields(GroupFrame& frame, std::index_sequence<I...>) {
    return {{countField(frame, static_cast<int>(I))...}};
}

TextBox placeholder(GroupFrame& frame, int index, int column, int row) {
    return {{&frame, "FlatEdit", cell(column, rowTop(row)), index}, TextBox::Lines::Single, Count};
}

TextBox totalField(GroupFrame& frame, const char* name, int column) {
    return {{&frame, name, cell(column, TotalTop)}, TextBox::Lines::Single, Total, Alignment::Right};
}

} // namespace

// The layout table: name, left, top, width, height in twips relative to the parent, Italian caption.
CoinControls::CoinControls()
    : window("frm_CaricaMoneta", "Carica moneta", {0, 0, 7275, 7110}),
      txt_valuta({&window, "txt_valuta", {120, 120, 2415, 495}}, TextBox::Lines::Single, Entry,
                 Alignment::Right),
      CMD_Carica({&window, "CMD_Carica", {2640, 120, 1335, 495}}, "", Denomination),
      Virtual_KeyPAD({&window, "Virtual_KeyPAD", {120, 720, 3855, 5415}}),
      CMD_cancella({&window, "CMD_cancella", {120, 6240, 615, 735}}, "", Action),
      CMD_Annulla({&window, "CMD_Annulla", {840, 6240, 1455, 735}}, "Annulla", Action),
      CMD_CaricaMoneta({&window, "CMD_CaricaMoneta", {2400, 6240, 1455, 735}}, "Carica monete", MainAction),
      FrameMoney({&window, "FrameMoney", {4080, 0, 3135, 7095}}, ""),
      lblValutaSec({&FrameMoney, "lblValutaSec", cell(SecondColumn, 240)}, "Fr.", Heading, Alignment::Center),
      lblValutaMain({&FrameMoney, "lblValutaMain", cell(EuroColumn, 240)}, "€", Heading, Alignment::Center),
      Label2{rowLabels(FrameMoney, std::make_index_sequence<15>{})},
      Label3({&FrameMoney, "Label3", labelPlace(rowTop(1))}, "500", RowLabel, Alignment::Right),
      Label4({&FrameMoney, "Label4", labelPlace(rowTop(8))}, "2", RowLabel, Alignment::Right),
      FlatEdit{placeholder(FrameMoney, 0, SecondColumn, LastRow - 1),
               placeholder(FrameMoney, 1, EuroColumn, 0), placeholder(FrameMoney, 2, SecondColumn, LastRow)},
      txtValuta{countFields(FrameMoney, std::make_index_sequence<CoinCount::FieldCount>{})},
      txtSecondaValuta{totalField(FrameMoney, "txtSecondaValuta", SecondColumn)},
      txtPrimaValuta{totalField(FrameMoney, "txtPrimaValuta", EuroColumn)} {
    window.setInitialFocus(txt_valuta);
    window.setTakesKeys(true);
    CMD_CaricaMoneta.setPrimary(true);
    Virtual_KeyPAD.setReadBack(readBack);
    for (auto* inert : {&FlatEdit[0], &FlatEdit[1], &FlatEdit[2], &txtSecondaValuta, &txtPrimaValuta}) {
        inert->setLocked(true);
        inert->setTabStop(false);
    }
    for (auto& placeholder : FlatEdit)
        placeholder.setStandsIn(true);
}

void CoinControls::retire() {
    ml_RuntimeSupport.disconnect();
    view.reset();
}

} // namespace kova
