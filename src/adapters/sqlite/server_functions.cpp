#include "adapters/sqlite/server_functions.h"

#include "adapters/sqlite/date_time_text.h"
#include "adapters/sqlite/server_dialect.h"

#include <algorithm>
#include <sqlite3.h>

namespace kova {
namespace {

std::string_view textOf(const void* bytes, int size) {
    return size > 0 ? std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size))
                    : std::string_view();
}

/// Byte of a lower-case letter. In UTF-8 the capitals À to Þ are C3 80 to C3 9E, their small letters 20 more,
/// except for the multiplication sign among them.
int folded(unsigned char byte, unsigned char previous) {
    const bool ascii = byte >= 'A' && byte <= 'Z';
    const bool latin = previous == 0xC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
    return ascii || latin ? byte + 0x20 : byte;
}

int compareIgnoringCase(void*, int sizeA, const void* a, int sizeB, const void* b) {
    const std::string_view textA = textOf(a, sizeA), textB = textOf(b, sizeB);
    const auto common = std::min(textA.size(), textB.size());
    unsigned char previous = 0; // of both texts: a lead byte is its own folded form
    for (std::size_t i = 0; i < common; ++i) {
        const auto byteA = static_cast<unsigned char>(textA[i]), byteB = static_cast<unsigned char>(textB[i]);
        if (const int difference = folded(byteA, previous) - folded(byteB, previous))
            return difference;
        previous = byteA;
    }
    return sizeA - sizeB;
}

int sign(bool less, bool greater) {
    return greater ? 1 : less ? -1 : 0;
}

/// Both forms with a blank and with a T, with milliseconds and without, compare as times.
int compareDateTimes(void*, int sizeA, const void* a, int sizeB, const void* b) {
    constexpr int plainSize = 19; // of texts YYYY-MM-DD HH:MM:SS, which sort as they are
    const std::string_view textA = textOf(a, sizeA), textB = textOf(b, sizeB);
    const bool plain = sizeA == plainSize && sizeB == plainSize && textA[10] == textB[10];
    const auto timeA = plain ? std::nullopt : parseDateTimeText(textA);
    const auto timeB = plain ? std::nullopt : parseDateTimeText(textB);
    if (timeA && timeB)
        return sign(*timeA<*timeB, *timeA> * timeB);
    return sign(textA<textB, textA> textB);
}

/// The first argument's text in the stored form; a style in the second argument needs no regard, since only
/// one form is read.
void convertToDateTime(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL)
        return;
    const void* text = sqlite3_value_text(arguments[0]);
    const auto time = parseDateTimeText(textOf(text, sqlite3_value_bytes(arguments[0])));
    if (!time) {
        sqlite3_result_error(context,
                             "Conversion failed when converting date and/or time from character string.", -1);
        return;
    }
    const std::string result = formatDateTimeText(*time);
    sqlite3_result_text64(context, result.data(), result.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

} // namespace

int addServerFunctions(sqlite3* database) {
    int code = sqlite3_create_collation(database, "NOCASE", SQLITE_UTF8, nullptr, compareIgnoringCase);
    if (code == SQLITE_OK)
        code = sqlite3_create_collation(database, serverDateTimeName, SQLITE_UTF8, nullptr, compareDateTimes);
    for (int arguments = 1; arguments <= 2 && code == SQLITE_OK; ++arguments)
        code = sqlite3_create_function(database, serverDateTimeName, arguments,
                                       SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, convertToDateTime,
                                       nullptr, nullptr);
    return code;
}

} // namespace kova
