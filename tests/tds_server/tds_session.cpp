#include "tds_session.h"

#include <sstream>

namespace kova::test {
namespace {

constexpr unsigned doneToken = 0xFD, doneOfCallToken = 0xFE, doneInCallToken = 0xFF;
constexpr unsigned moreFollows = 0x01, failed = 0x02, counted = 0x10, attentionSeen = 0x20;
constexpr std::string_view dictated = "SEND ";
constexpr std::size_t enoughToSend = 65536; ///< bytes
constexpr std::int32_t logInFailed = 18456, invalidObject = 208, wrongSyntax = 102;

std::int32_t serverNumber(const DatabaseError& error) {
    return error.sqlState() == "42S02" ? invalidObject : wrongSyntax;
}

/// What a driver says to set up its session, which the embedded database neither knows nor needs.
bool isHousekeeping(std::string_view text) {
    for (const std::string_view start : {"SET ", "set ", "USE ", "use "})
        if (text.starts_with(start))
            return true;
    return false;
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

/// A field of the log-in message: its place and its length in characters stand at `position`.
template <class Read>
std::string readField(const std::string& body, std::size_t position, Read read) {
    WireReader place(std::string_view(body).substr(position));
    const auto offset = place.word();
    return read(WireReader(std::string_view(body).substr(offset)), place.word());
}

std::string readLogInText(WireReader reader, std::size_t characters) {
    return reader.text(characters);
}

} // namespace

void TdsSession::run() {
    try {
        while (const auto message = stream_.receive()) {
            if (message->kind == MessageKind::PreLogIn)
                answerPreLogIn();
            else if (message->kind == MessageKind::LogIn && answerLogIn(message->body))
                loggedIn_ = true;
            else if (message->kind == MessageKind::Batch && loggedIn_)
                answerBatch(message->body);
            else if (message->kind == MessageKind::Call && loggedIn_)
                answerCall(message->body);
            else if (message->kind == MessageKind::Attention && loggedIn_) {
                addDone(doneToken, attentionSeen, 0);
                flush();
            } else
                break;
        }
    } catch (const std::runtime_error&) {
        // A message that makes no sense: the client sees the connection end.
    }
    stream_.hangUp();
}

/// Offers no encryption: what goes over the loopback stays in the clear.
void TdsSession::answerPreLogIn() {
    constexpr unsigned version = 0, encryption = 1, end = 0xFF, notSupported = 2;
    const auto option = [&](unsigned name, unsigned place, unsigned size) {
        writer_.byte(name).byte(0).byte(place).byte(0).byte(size); // highest byte first
    };
    option(version, 11, 6);
    option(encryption, 17, 1);
    writer_.byte(end).byte(15).byte(0).word(0x07D0).word(0).byte(notSupported);
    flush();
}

bool TdsSession::answerLogIn(const std::string& body) {
    WireReader reader(body);
    reader.number<std::uint32_t>(); // length
    const auto version = reader.number<std::uint32_t>();
    const auto packetSize = reader.number<std::uint32_t>();
    version_ = version >> 24;
    const auto user = readField(body, 40, readLogInText);
    const auto what = services_.logIn(user, readField(body, 44, readPassword), version_);
    if (what == LogIns::Ignore)
        listenInVain();
    if (what != LogIns::Accept) {
        sendError(logInFailed, "Login failed for user '" + user + "'.", false);
        return false;
    }
    addEnvironment(1, "shop", "master");
    addEnvironment(2, "us_english", "");
    WireWriter acknowledgement;
    acknowledgement.byte(1);
    for (const unsigned shift : {24u, 16u, 8u, 0u})
        acknowledgement.byte(version >> shift & 0xFF);
    acknowledgement.shortText("Test server").byte(15).byte(0).byte(0x07).byte(0xD0);
    writer_.byte(0xAD).word(acknowledgement.size()).bytes(acknowledgement.built());
    addEnvironment(4, std::to_string(packetSize), "4096");
    addDone(doneToken, 0, 0);
    flush();
    stream_.setPacketSize(packetSize);
    return true;
}

std::string_view TdsSession::withoutHeaders(std::string_view body) const {
    if (version_ >= Tds72)
        body.remove_prefix(std::min<std::size_t>(WireReader(body).number<std::uint32_t>(), body.size()));
    return body;
}

void TdsSession::answerBatch(const std::string& body) {
    const auto text = withoutHeaders(body);
    answer({WireReader(text).text(text.size() / 2), {}, {}}, false);
}

void TdsSession::answerCall(const std::string& body) {
    answer(readExecuteCall(withoutHeaders(body)), true);
}

void TdsSession::answer(const ExecuteCall& call, bool isCall) {
    const auto fault = services_.received(call);
    if (isHousekeeping(call.text)) {
        addDone(doneToken, 0, 0);
        flush();
        return;
    }
    if (call.text.starts_with(dictated)) {
        sendDictated(std::string_view(call.text).substr(dictated.size()));
        return;
    }
    if (fault && fault->kind == Fault::Kind::Fail) {
        sendError(fault->number, fault->message, isCall);
        return;
    }
    if (fault && suffer(*fault))
        return;
    try {
        Query query{call.text};
        for (const DateTime date : call.dates)
            query.parameters.push_back({"", "", date});
        sendRows(services_.answer(query), fault, isCall);
    } catch (const DatabaseError& error) {
        sendError(serverNumber(error), error.what(), isCall);
    }
}

/// Until the client hangs up, or the server stops.
void TdsSession::listenInVain() {
    while (stream_.receive()) {
    }
}

/// Whether the fault leaves nothing to answer.
bool TdsSession::suffer(const Fault& fault) {
    if (fault.kind == Fault::Kind::HangUp) {
        stream_.hangUp();
        return true;
    }
    if (fault.kind == Fault::Kind::Stall)
        return true; // the client's attention comes in as the next message
    if (fault.kind == Fault::Kind::StallDeadly) {
        listenInVain();
        return true;
    }
    return false;
}

/// Whether the fault ends the answer between two rows.
bool TdsSession::interrupt(const Fault& fault, bool isCall) {
    if (fault.kind == Fault::Kind::FailLate) {
        sendError(fault.number, fault.message, isCall);
    } else if (fault.kind == Fault::Kind::StallLate) {
        sendSoFar(writer_.size());
    } else {
        return false;
    }
    return true;
}

void TdsSession::sendSoFar(std::size_t bytes) {
    stream_.add(std::string_view(writer_.built()).substr(0, bytes));
    writer_.clear();
    stream_.sendSoFar();
}

/// One row of columns without names, each of them two words of hexadecimal digits: its type and its cell.
void TdsSession::sendDictated(std::string_view columns) {
    const auto bytesOf = [](const std::string& digits) {
        std::string bytes;
        for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
            bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
        return bytes;
    };
    std::istringstream words{std::string(columns)};
    std::string cells;
    std::size_t count = 0;
    WireWriter described;
    for (std::string type, cell; words >> type >> cell; ++count) {
        described.number(std::uint32_t{0}).word(1).bytes(bytesOf(type)).byte(0);
        cells += bytesOf(cell);
    }
    writer_.byte(0x81).word(count).bytes(described.built()).byte(0xD1).bytes(cells);
    addDone(doneToken, counted, 1);
    flush();
}

void TdsSession::sendRows(Recordset records, const std::optional<Fault>& fault, bool isCall) {
    std::vector<ResultColumn> columns;
    for (std::size_t i = 0; i < records.fieldCount(); ++i)
        columns.emplace_back(records, i, version_);
    writer_.byte(0x81).word(columns.size());
    for (const ResultColumn& column : columns)
        column.describe(writer_);
    std::size_t row = 0;
    for (;; records.moveNext(), ++row) {
        const bool faulty = fault && row == fault->afterRows;
        if (faulty && fault->kind == Fault::Kind::FailLate && records.endOfFile())
            addDone(isCall ? doneInCallToken : doneToken, counted | moreFollows, row);
        if (faulty && interrupt(*fault, isCall))
            return;
        if (records.endOfFile())
            break;
        const auto start = writer_.size();
        writer_.byte(0xD1);
        for (std::size_t i = 0; i < columns.size(); ++i)
            columns[i].writeCell(writer_, records.field(i));
        if (faulty && fault->kind == Fault::Kind::BreakOff) {
            sendSoFar((start + writer_.size()) / 2);
            stream_.hangUp();
            return;
        }
        if (writer_.size() > enoughToSend) {
            stream_.add(writer_.built());
            writer_.clear();
        }
    }
    if (isCall) {
        addDone(doneInCallToken, counted | moreFollows, row);
        writer_.byte(0x79).number(std::int32_t{0}); // the procedure's result
        addDone(doneOfCallToken, 0, 0);
    } else {
        addDone(doneToken, counted, row);
    }
    flush();
}

void TdsSession::sendError(std::int32_t number, const std::string& message, bool isCall) {
    addError(number, message);
    addDone(isCall ? doneOfCallToken : doneToken, failed, 0);
    flush();
}

void TdsSession::addError(std::int32_t number, const std::string& message) {
    constexpr unsigned state = 1, severity = 16;
    WireWriter error;
    error.number(number).byte(state).byte(severity).longText(message).shortText("TEST").shortText("");
    if (version_ >= Tds72)
        error.number(std::int32_t{1}); // line
    else
        error.word(1);
    writer_.byte(0xAA).word(error.size()).bytes(error.built());
}

void TdsSession::addDone(unsigned token, unsigned status, std::size_t rows) {
    constexpr std::size_t select = 0xC1;
    writer_.byte(token).word(status).word(select);
    if (version_ >= Tds72)
        writer_.number(std::uint64_t{rows});
    else
        writer_.number(static_cast<std::uint32_t>(rows));
}

void TdsSession::addEnvironment(unsigned kind, const std::string& now, const std::string& before) {
    WireWriter change;
    change.byte(kind).shortText(now).shortText(before);
    writer_.byte(0xE3).word(change.size()).bytes(change.built());
}

void TdsSession::flush() {
    stream_.add(writer_.built());
    writer_.clear();
    stream_.finish();
}

} // namespace kova::test
