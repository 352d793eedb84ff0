#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kova::test {

enum class MessageKind : std::uint8_t {
    Batch = 0x01,
    Call = 0x03,
    Response = 0x04,
    Attention = 0x06,
    LogIn = 0x10,
    PreLogIn = 0x12
};

struct Message {
    MessageKind kind;
    std::string body;
};

/// Messages, cut into packets, on a connected socket, which it closes at its end.
class PacketStream {
  public:
    explicit PacketStream(int socket) : socket_(socket) {}
    PacketStream(const PacketStream&) = delete;
    PacketStream& operator=(const PacketStream&) = delete;
    ~PacketStream();

    /// Waits for a whole message; nothing when the other side is gone.
    std::optional<Message> receive() const;
    /// Sends a part of the response, cut into packets; the last part ends it.
    void send(std::string_view part, bool last) const;
    /// Makes all waiting end; the only operation for other threads.
    void hangUp() const;

  private:
    bool receiveExactly(void* target, std::size_t count) const;
    int socket_;
};

} // namespace kova::test
