#pragma once
#include "call_parameters.h"
#include "faults.h"
#include "packets.h"
#include "result_columns.h"

#include <optional>
#include <string>

namespace kova::test {

enum class LogIns { Accept, Refuse, Ignore };

/// What a session asks of the server that it belongs to. Called from the session's own thread.
class SessionServices {
  public:
    virtual ~SessionServices() = default;
    /// What to do with this client.
    virtual LogIns logIn(const std::string& user, const std::string& password, unsigned version) = 0;
    /// A text has arrived, with the declaration of its parameters.
    virtual std::optional<Fault> received(const ExecuteCall& call) = 0;
    virtual Recordset answer(const Query& query) = 0;
};

/// One client's connection, from its first packet to its last.
class TdsSession {
  public:
    TdsSession(int socket, SessionServices& services) : stream_(socket), services_(services) {}
    void run();
    /// Ends `run`; for other threads.
    void hangUp() const { stream_.hangUp(); }

  private:
    bool answer(const Message& message);
    void answerPreLogIn();
    bool answerLogIn(const std::string& body);
    void answer(const ExecuteCall& call);
    void listenInVain() const;
    bool suffer(const Fault& fault);
    bool interrupt(const Fault& fault);
    void sendSoFar(std::size_t bytes);
    void sendDictated(const std::string& columns);
    void sendRows(Recordset records, const std::optional<Fault>& fault);
    void sendError(std::int32_t number, const std::string& message);
    void sendDone(unsigned token, unsigned status, std::size_t rows);
    void addDone(unsigned token, unsigned status, std::size_t rows);

    PacketStream stream_;
    SessionServices& services_;
    WireWriter writer_;
    unsigned version_ = 0x74;
    bool isCall_ = false; ///< that a call is being answered, not a batch
};

} // namespace kova::test
