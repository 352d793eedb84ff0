#include "adapters/odbc/odbc_connection_text.h"

#include "base/ascii_text.h"
#include "ports/database.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <vector>

namespace kova {
namespace {

/// `key=value` with its separator; something without an equals sign has neither key nor value.
struct Pair {
    std::string_view key, value, whole;
};

/// ODBC knows braces around a value, ADO quotes as well.
enum class Form { Odbc, Ado };

/// Where a value ends: at the next semicolon, or behind a value in braces or quotes, in which the closing
/// mark is doubled.
std::size_t endOfValue(std::string_view text, std::size_t start, Form form) {
    auto position = text.find_first_not_of(" \t", start);
    const char opening = position == std::string_view::npos ? ' ' : text[position];
    if (opening == '{' || (form == Form::Ado && (opening == '"' || opening == '\''))) {
        const char closing = opening == '{' ? '}' : opening;
        while ((position = text.find(closing, position + 1)) != std::string_view::npos &&
               text.substr(position + 1).starts_with(closing))
            ++position;
    } else {
        position = start;
    }
    return position == std::string_view::npos ? text.size() : std::min(text.find(';', position), text.size());
}

std::vector<Pair> pairsOf(std::string_view text, Form form) {
    std::vector<Pair> pairs;
    for (std::size_t start = 0; start < text.size();) {
        const auto mark = text.find_first_of("=;", start);
        const bool hasValue = mark != std::string_view::npos && text[mark] == '=';
        const auto end = hasValue ? endOfValue(text, mark + 1, form) : std::min(mark, text.size());
        const auto next = std::min(end + 1, text.size());
        Pair pair{{}, {}, text.substr(start, next - start)};
        if (hasValue) {
            pair.key = trimmed(text.substr(start, mark - start));
            pair.value = trimmed(text.substr(mark + 1, end - mark - 1));
        }
        pairs.push_back(pair);
        start = next;
    }
    return pairs;
}

bool isAnyOf(std::string_view key, std::initializer_list<std::string_view> names) {
    return std::ranges::any_of(names, [&](std::string_view name) { return equalIgnoringCase(key, name); });
}

bool hasKey(std::string_view text, Form form, std::initializer_list<std::string_view> names) {
    return std::ranges::any_of(pairsOf(text, form),
                               [&](const Pair& pair) { return isAnyOf(pair.key, names); });
}

bool namesDriver(std::string_view text) {
    return hasKey(text, Form::Odbc, {"driver", "dsn", "filedsn"});
}

std::string_view withoutBraces(std::string_view value) {
    if (value.size() < 2 || !value.starts_with('{') || !value.ends_with('}'))
        return value;
    return value.substr(1, value.size() - 2);
}

DatabaseError refused(const std::string& what) {
    return {DatabaseError::Unspecified, what, "HY024"};
}

std::chrono::seconds secondsOf(const Pair& pair) {
    const auto value = withoutBraces(pair.value);
    std::int32_t seconds = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), seconds);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size() || seconds < 0)
        throw refused(std::string(pair.key) + " is no number of seconds: " + std::string(value));
    return std::chrono::seconds(seconds);
}

/// A value of ADO's form as it is meant.
std::string plain(std::string_view value) {
    const char opening = value.empty() ? ' ' : value.front();
    const char closing = opening == '{' ? '}' : opening;
    if (value.size() < 2 || (opening != '{' && opening != '"' && opening != '\'') || value.back() != closing)
        return std::string(value);
    std::string result;
    for (std::size_t i = 1; i + 1 < value.size(); ++i) {
        result += value[i];
        if (value[i] == closing)
            ++i; // doubled
    }
    return result;
}

/// In braces where ODBC would take it apart.
std::string inBraces(const std::string& value) {
    if (value.find_first_of(";{}[](),?*=!@ ") == std::string::npos)
        return value;
    std::string result = "{";
    for (const char c : value)
        result.append(c == '}' ? 2 : 1, c);
    return result + "}";
}

bool isFreeTds(const std::string& driver) {
    return driver.find("TDS") != std::string::npos || driver.find("tds") != std::string::npos;
}

/// FreeTDS takes the port by itself, the others behind a comma.
std::string serverText(std::string server, const std::string& driver) {
    if (equalIgnoringCase(std::string_view(server).substr(0, 4), "tcp:"))
        server.erase(0, 4);
    const auto comma = server.find(',');
    const std::string port = comma == std::string::npos ? "" : std::string(trimmed(server.substr(comma + 1)));
    const std::string address(trimmed(std::string_view(server).substr(0, comma)));
    const auto slash = address.find('\\');
    std::string host = address.substr(0, slash);
    if (isAnyOf(host, {".", "(local)"}))
        host = "localhost";
    const std::string instance = slash == std::string::npos || !port.empty() ? "" : address.substr(slash);
    if (!isFreeTds(driver))
        return "Server=" + inBraces(host + instance + (port.empty() ? "" : "," + port)) + ";";
    std::string text = "Server=" + inBraces(host + instance) + ";";
    if (instance.empty())
        text += "Port=" + (port.empty() ? "1433" : port) + ";";
    return text;
}

bool saysYes(const std::string& value) {
    return isAnyOf(value, {"yes", "true", "sspi", "mandatory", "strict", "1"});
}

/// Providers of SQL Server by how their names begin; MSDASQL only hands on to ODBC.
bool knowsProvider(std::string_view name) {
    return std::ranges::any_of(std::array{"sqloledb", "sqlncli", "msoledbsql"}, [&](std::string_view known) {
        return equalIgnoringCase(name.substr(0, known.size()), known);
    });
}

/// What a key of ADO's form, time-outs apart, is to the driver.
std::string translated(const Pair& pair, const std::string& driver) {
    const std::string value = plain(pair.value);
    const auto is = [&](std::initializer_list<std::string_view> names) { return isAnyOf(pair.key, names); };
    const auto as = [&](const std::string& key) { return key + "=" + inBraces(value) + ";"; };
    if (pair.key.empty() ||
        is({"persist security info", "auto translate", "ole db services", "mode", "packet size",
            "use procedure for prepare", "tag with column collation when possible", "datatypecompatibility",
            "locale identifier", "pooling"}))
        return {}; // without it nothing that is read here changes
    if (is({"provider"}) && knowsProvider(value))
        return {};
    if (is({"data source", "server", "addr", "address", "network address"}))
        return serverText(value, driver);
    if (is({"initial catalog", "database"}))
        return as("Database");
    if (is({"user id", "uid", "user"}))
        return as("UID");
    if (is({"password", "pwd"}))
        return as("PWD");
    if (is({"integrated security", "trusted_connection"}))
        return saysYes(value) ? "Trusted_Connection=Yes;" : "";
    if (is({"application name", "app"}))
        return as("APP");
    if (is({"workstation id", "wsid"}))
        return as("WSID");
    if (is({"current language", "language"}))
        return as("Language");
    if (is({"encrypt", "use encryption for data"}))
        return isFreeTds(driver) ? (saysYes(value) ? "Encryption=require;" : "") : as("Encrypt");
    if (is({"trustservercertificate", "trust server certificate"}))
        return isFreeTds(driver) ? "" : as("TrustServerCertificate");
    if (is({"multipleactiveresultsets", "mars connection"}) && !saysYes(value))
        return {};
    throw refused("Not understood in the connection text: " + std::string(pair.key) +
                  (is({"provider"}) ? "=" + value : ""));
}

} // namespace

bool namesOdbc(std::string_view connectionString) {
    return namesDriver(connectionString) ||
           hasKey(connectionString, Form::Ado,
                  {"provider", "server", "addr", "address", "network address", "initial catalog", "database",
                   "user id", "uid", "user", "password", "pwd", "integrated security", "trusted_connection"});
}

bool namesAdoProvider(std::string_view connectionString) {
    return hasKey(connectionString, Form::Ado, {"provider"}) && !namesDriver(connectionString);
}

OdbcConnectionText parseOdbcConnectionText(std::string_view connectionString,
                                           const std::string& defaultDriver) {
    OdbcConnectionText result;
    const Form form = namesDriver(connectionString) ? Form::Odbc : Form::Ado;
    if (form == Form::Ado) {
        result.driver = defaultDriver;
        result.driverText = "Driver={" + defaultDriver + "};";
    }
    for (const Pair& pair : pairsOf(connectionString, form)) {
        if (isAnyOf(pair.key, {"connection timeout", "connect timeout"})) {
            result.logInTimeout = secondsOf(pair);
        } else if (isAnyOf(pair.key, {"query timeout", "command timeout", "general timeout"})) {
            result.queryTimeout = secondsOf(pair);
        } else if (form == Form::Ado) {
            result.driverText += translated(pair, defaultDriver);
        } else if (!isAnyOf(pair.key, {"provider"})) { // the driver is named beside it
            if (isAnyOf(pair.key, {"driver"}))
                result.driver = withoutBraces(pair.value);
            result.driverText += pair.whole;
        }
    }
    if (!result.driverText.ends_with(';'))
        result.driverText += ';'; // FreeTDS takes braces apart only before one
    return result;
}

} // namespace kova
