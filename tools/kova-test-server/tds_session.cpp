#include "tds_session.h"

#include "base/ascii_text.h"
#include "tds_server.h"

#include <sstream>
#include <thread>

namespace kova::tds {
namespace {

constexpr unsigned DoneToken = 0xFD, DoneOfCallToken = 0xFE, DoneInCallToken = 0xFF;
constexpr unsigned MoreFollows = 0x01, Failed = 0x02, Counted = 0x10, AttentionSeen = 0x20;
constexpr std::string_view Dictated = "SEND ";
constexpr std::int32_t LogInFailed = 18456, InvalidObject = 208, WrongSyntax = 102;

/// What a driver says to set up its session, which the embedded database neither knows nor needs.
bool isHousekeeping(std::string_view text) {
    const auto start = text.substr(0, 4);
    return equalIgnoringCase(start, "SET ") || equalIgnoringCase(start, "USE ");
}

/// Every half byte of a password travels in the other half's place.
std::string readPassword(WireReader reader, std::size_t characters) {
    std::string scrambled(reader.bytes(2 * characters));
    for (char& c : scrambled) {
        const auto mixed = static_cast<unsigned char>(static_cast<unsigned char>(c) ^ 0xA5);
        c = static_cast<char>(mixed >> 4 | (mixed & 0xF) << 4);
    }
    return WireReader(scrambled).text(characters);
}

/// A reader behind the offset that stands at `position` of the log-in message, and the length after that.
std::pair<WireReader, std::size_t> fieldAt(std::string_view body, std::size_t position) {
    WireReader place(body.substr(position));
    const auto offset = place.word();
    return {WireReader(body.substr(offset)), place.word()};
}

constexpr unsigned NtextType = 0x63, DateType = 0x28, DateTimeType = 0x6F;

/// Name and status come before the type.
unsigned readType(WireReader& reader) {
    reader.text(reader.byte());
    reader.byte();
    return reader.byte();
}

std::string readText(WireReader& reader) {
    constexpr std::size_t LengthAndCollation = 4 + 5;
    if (readType(reader) != NtextType)
        throw std::runtime_error("a text is expected");
    reader.bytes(LengthAndCollation);
    return reader.text(static_cast<std::size_t>(reader.number<std::int32_t>()) / 2);
}

DateTime readDate(WireReader& reader) {
    using namespace std::chrono;
    const auto type = readType(reader);
    if (type == DateType && reader.byte() == 3) {
        const auto low = reader.word();
        return local_days(0001y / January / 1) + days(low | static_cast<std::size_t>(reader.byte()) << 16);
    }
    if (type == DateTimeType && reader.byte() == 8 && reader.byte() == 8) {
        const auto day = local_days(1900y / January / 1) + days(reader.number<std::int32_t>());
        return day + milliseconds(std::int64_t{reader.number<std::uint32_t>()} * 10 / 3);
    }
    throw std::runtime_error("a date is expected");
}

/// Reads the body of a call, behind its headers. Throws std::runtime_error for anything that the component's
/// driver does not send.
ExecuteCall readExecuteCall(std::string_view body) {
    WireReader reader(body);
    constexpr unsigned ByNumber = 0xFFFF, ExecuteSql = 10;
    if (reader.word() != ByNumber || reader.word() != ExecuteSql)
        throw std::runtime_error("only sp_executesql can be called");
    reader.word(); // options
    ExecuteCall call;
    call.text = readText(reader);
    if (!reader.atEnd())
        call.declaration = readText(reader);
    while (!reader.atEnd())
        call.dates.push_back(readDate(reader));
    return call;
}

} // namespace

void TdsSession::run() {
    try {
        for (auto message = stream_.receive(); message && answer(*message);)
            message = stream_.receive();
    } catch (const std::runtime_error&) {
        // A message that makes no sense: the client sees the connection end.
    }
    stream_.hangUp();
}

/// Whether the session goes on.
bool TdsSession::answer(const Message& message) {
    isCall_ = message.kind == MessageKind::Call;
    std::string_view text = message.body;
    switch (message.kind) {
    case MessageKind::PreLogIn:
        answerPreLogIn();
        return true;
    case MessageKind::LogIn:
        return answerLogIn(message.body);
    case MessageKind::Attention:
        sendDone(DoneToken, AttentionSeen, 0);
        return true;
    default:
        if (version_ >= Tds72) // headers come first, and their size ahead of them
            text.remove_prefix(std::min<std::size_t>(WireReader(text).number<std::uint32_t>(), text.size()));
        answer(isCall_ ? readExecuteCall(text) : ExecuteCall{WireReader(text).text(text.size() / 2), {}, {}});
        return true;
    }
}

/// Offers no encryption: what goes over the loopback stays in the clear.
void TdsSession::answerPreLogIn() {
    constexpr std::string_view Version("\0\0\x0B\0\x06", 5), Encryption("\1\0\x11\0\1", 5); // places, lengths
    constexpr unsigned End = 0xFF, NotSupported = 2;
    writer_.bytes(Version).bytes(Encryption).byte(End);
    writer_.byte(15).byte(0).word(0x07D0).word(0).byte(NotSupported);
    flush(true);
}

bool TdsSession::answerLogIn(const std::string& body) {
    WireReader reader(body);
    reader.number<std::uint32_t>(); // length
    const auto version = reader.number<std::uint32_t>();
    version_ = version >> 24;
    auto [nameReader, nameLength] = fieldAt(body, 40);
    const auto [passwordReader, passwordLength] = fieldAt(body, 44);
    const auto user = nameReader.text(nameLength);
    const auto what = server_.logIn(user, readPassword(passwordReader, passwordLength), version_);
    if (what == LogIns::Ignore)
        waitForHangUp();
    if (what == LogIns::HangUp)
        return false;
    if (what != LogIns::Accept) {
        sendError(LogInFailed, "Login failed for user '" + user + "'.");
        return false;
    }
    WireWriter acknowledgement;
    acknowledgement.byte(1);
    for (const unsigned shift : {24u, 16u, 8u, 0u})
        acknowledgement.byte(version >> shift & 0xFF);
    acknowledgement.shortText("Test server").byte(15).byte(0).byte(0x07).byte(0xD0);
    writer_.byte(0xAD).word(acknowledgement.size()).bytes(acknowledgement.built());
    sendDone(DoneToken, 0, 0);
    return true;
}

void TdsSession::answer(const ExecuteCall& call) {
    const auto fault = server_.received(call);
    if (isHousekeeping(call.text))
        return sendDone(DoneToken, 0, 0);
    if (call.text.starts_with(Dictated))
        return sendDictated(call.text.substr(Dictated.size()));
    if (fault && respondWith(*fault))
        return;
    try {
        Query query{call.text};
        for (const DateTime date : call.dates)
            query.parameters.push_back({"", "", date});
        half_ = fault && (fault->kind == Fault::Kind::StallHalf || fault->kind == Fault::Kind::HangUpHalf);
        sendRows(server_.answer(query), fault);
        if (half_ && fault->kind == Fault::Kind::StallHalf)
            waitForHangUp();
        else if (half_)
            stream_.hangUp();
    } catch (const DatabaseError& error) {
        sendError(error.sqlState() == "42S02" ? InvalidObject : WrongSyntax, error.what());
    }
}

/// Until the client hangs up, or the server stops.
void TdsSession::waitForHangUp() const {
    while (stream_.receive()) {
    }
}

/// Returns whether that was the whole response.
bool TdsSession::respondWith(const Fault& fault) {
    switch (fault.kind) {
    case Fault::Kind::Fail:
        sendError(fault.number, fault.message);
        return true;
    case Fault::Kind::HangUp:
        stream_.hangUp();
        return true;
    case Fault::Kind::StallForever:
        waitForHangUp();
        return true;
    case Fault::Kind::Stall: // the client's attention comes in as the next message
        return true;
    case Fault::Kind::Delay:
        std::this_thread::sleep_for(fault.pause);
        return false;
    case Fault::Kind::Hold:
        server_.holdUntilRecovery();
        return false;
    default:
        return false;
    }
}

/// One row of columns without names, each of them two words of hexadecimal digits: its type and its cell.
void TdsSession::sendDictated(const std::string& columns) {
    const auto bytesOf = [](const std::string& digits) {
        std::string bytes;
        for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
            bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
        return bytes;
    };
    std::istringstream words(columns);
    std::string cells;
    std::size_t count = 0;
    WireWriter described;
    for (std::string type, cell; words >> type >> cell; ++count) {
        described.number(std::uint32_t{0}).word(1).bytes(bytesOf(type)).byte(0);
        cells += bytesOf(cell);
    }
    writer_.byte(0x81).word(count).bytes(described.built()).byte(0xD1).bytes(cells);
    sendDone(DoneToken, Counted, 1);
}

void TdsSession::sendRows(Recordset records, const std::optional<Fault>& fault) {
    std::vector<ResultColumn> columns;
    for (std::size_t i = 0; i < records.fieldCount(); ++i)
        columns.emplace_back(records, i, version_);
    writer_.byte(0x81).word(columns.size());
    for (const ResultColumn& column : columns)
        column.describe(writer_);
    std::size_t row = 0;
    for (;; records.moveNext(), ++row) {
        const auto kind = fault && row == fault->afterRows ? fault->kind : Fault::Kind::Fail; // or no fault
        if (kind == Fault::Kind::StallLate)
            return flush(false);
        if (kind == Fault::Kind::DelayLate) {
            flush(false);
            std::this_thread::sleep_for(fault->pause);
        }
        if (kind == Fault::Kind::FailLate) {
            if (records.endOfFile())
                addDone(isCall_ ? DoneInCallToken : DoneToken, Counted | MoreFollows, row);
            return sendError(fault->number, fault->message);
        }
        if (records.endOfFile())
            break;
        const auto start = writer_.size();
        writer_.byte(0xD1);
        for (std::size_t i = 0; i < columns.size(); ++i)
            columns[i].writeCell(writer_, records.field(i));
        if (kind == Fault::Kind::BreakOff) {
            writer_.cut((start + writer_.size()) / 2);
            flush(false);
            return stream_.hangUp();
        }
    }
    if (isCall_) {
        addDone(DoneInCallToken, Counted | MoreFollows, row);
        writer_.byte(0x79).number(std::int32_t{0}); // the procedure's result
        sendDone(DoneOfCallToken, 0, 0);
    } else {
        sendDone(DoneToken, Counted, row);
    }
}

void TdsSession::sendError(std::int32_t number, const std::string& message) {
    constexpr unsigned State = 1, Severity = 16;
    WireWriter error;
    error.number(number).byte(State).byte(Severity).longText(message).shortText("TEST").shortText("");
    error.word(1); // line, of four bytes since 7.2
    if (version_ >= Tds72)
        error.word(0);
    writer_.byte(0xAA).word(error.size()).bytes(error.built());
    sendDone(isCall_ ? DoneOfCallToken : DoneToken, Failed, 0);
}

void TdsSession::addDone(unsigned token, unsigned status, std::size_t rows) {
    constexpr std::size_t Select = 0xC1;
    writer_.byte(token).word(status).word(Select).number(static_cast<std::uint32_t>(rows));
    if (version_ >= Tds72)
        writer_.number(std::uint32_t{0}); // the higher half of the count
}

void TdsSession::flush(bool last) {
    if (half_)
        stream_.sendHalf(writer_.built());
    else
        stream_.send(writer_.built(), last);
    writer_.cut(0);
}

/// The end of a response.
void TdsSession::sendDone(unsigned token, unsigned status, std::size_t rows) {
    addDone(token, status, rows);
    flush(true);
}

} // namespace kova::tds
