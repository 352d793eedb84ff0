#pragma once
#include <QString>

#include <cstdint>

namespace kova {

/// The component's languages, by their Windows identifiers.
inline constexpr std::int32_t Italian = 1040, German = 1031, English = 9;

/// The host's own texts; the dialog has its own.
enum class Caption {
    Title,
    Subtitle,
    OpenDialog,
    Choices,
    Till,
    User,
    NoUser,
    DefaultPayment,
    NoPayment,
    CompanyCurrency,
    SoftwareName,
    CompanyCurrencyOnly,
    CloseAutomatically,
    ConfirmAutomatically,
    DoubleMovement,
    OnlyOwnMovements,
    ShowProvisional,
    DarkColours,
    OfferPreviousFloat,
    OpeningFloat,
    Events,
    NoEvents,
    FirstSentence, ///< of the introduction, like the next two
    SecondSentence,
    ThirdSentence,
    Understood,
    Movements,
    NoMovements,
    ColumnMoment,
    ColumnActivity,
    ColumnPayment,
    ColumnDirection,
    ColumnAmount,
    ColumnCurrency,
    ColumnNote,
    ColumnDrawer,
    ColumnTill,
    ColumnOperator,
    Incoming,
    Outgoing,
    Drawer,
    PrintDay,   ///< %1 is the day
    PreviewDay, ///< %1 is the day
    DrawerOpened,
    NotStored, ///< %1 is the reason
    EntriesKept,
    ListUnreadable, ///< %1 is the reason
    ReadOnly,
    DatabaseUnusable, ///< %1 is its name
    DocumentTitle,
    AllTills,
    MovementCount, ///< %1 is their number, not 1
    OneMovement,
    ColumnTime,
    Sums,
    MovementsInSum,
    SumIncoming,
    SumOutgoing,
    Balance,
    Total,
    PrintedAt,     ///< %1 is the day, %2 the time
    NoDate,        ///< %1 is what was entered
    NoMovementsOn, ///< %1 is the day
    DayUnreadable, ///< %1 is the reason
    NotPrinted,    ///< %1 is the reason
    PrinterFault,
    ClosePreview,
    Print,
    Cancel,
    Copies,
    FewerCopies,
    MoreCopies,
    SaveAsPdf,
    NoPrinter,
    AllUsers,
    PreviousPage,
    NextPage,
    PageOf, ///< %1 is the page, %2 their number
    Enlarge,
    Shrink
};

/// An amount as it was stored: grouped, with two decimals, more only where it has more (up to four).
QString amountText(double amount);

/// In Italian for a language that is neither German (1031) nor English (9).
QString caption(Caption which, std::int32_t languageId);

} // namespace kova
