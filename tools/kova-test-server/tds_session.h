#pragma once
#include "result_columns.h"

#include <chrono>
#include <optional>
#include <string>

namespace kova::tds {

/// A call of sp_executesql, taken apart.
struct ExecuteCall {
    std::string text;
    std::string declaration;     ///< such as "@P1 date"
    std::vector<DateTime> dates; ///< the parameters, of which this server knows dates alone
};

enum class LogIns { Accept, Refuse, Ignore, HangUp };

/// What the server does to a query whose text contains a piece.
struct Fault {
    enum class Kind {
        Fail,      ///< refuses it with `number` and `message`
        HangUp,    ///< hangs up without an answer
        BreakOff,  ///< hangs up in the middle of the row that follows `afterRows` others
        Stall,     ///< answers only when the client gives up
        StallLate, ///< the same behind `afterRows` rows
        Delay,     ///< answers `pause` later
        DelayLate, ///< the same behind `afterRows` rows
        FailLate,  ///< refuses it with `number` and `message` behind `afterRows` rows, or behind the result
        StallForever, ///< answers never, nor what the client sends when it gives up
        StallHalf,    ///< the same behind half of the answer's first packet
        HangUpHalf,   ///< hangs up there
        Hold          ///< answers when the server recovers
    };
    std::string piece;
    Kind kind = Kind::Fail;
    std::size_t afterRows = 0;
    std::int32_t number = 0;
    std::string message = {};
    int times = 1'000'000; ///< how many queries it meets
    std::chrono::milliseconds pause{0};
};

class TdsServer;

/// One client's connection, from its first packet to its last.
class TdsSession {
  public:
    TdsSession(int socket, TdsServer& server) : stream_(socket), server_(server) {}
    void run();
    /// Ends `run`; for other threads.
    void hangUp() const { stream_.hangUp(); }

  private:
    bool answer(const Message& message);
    void answerPreLogIn();
    bool answerLogIn(const std::string& body);
    void answer(const ExecuteCall& call);
    void waitForHangUp() const;
    bool respondWith(const Fault& fault);
    void sendDictated(const std::string& columns);
    void sendRows(Recordset records, const std::optional<Fault>& fault);
    void sendError(std::int32_t number, const std::string& message);
    void sendDone(unsigned token, unsigned status, std::size_t rows);
    void addDone(unsigned token, unsigned status, std::size_t rows);
    void flush(bool last);

    PacketStream stream_;
    TdsServer& server_;
    WireWriter writer_;
    unsigned version_ = 0x74;
    bool isCall_ = false; ///< that a call is being answered, not a batch
    bool half_ = false;   ///< of the answer's first packet is all that is sent
};

} // namespace kova::tds
