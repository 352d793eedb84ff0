#include "wire.h"

#include <sys/socket.h>
#include <unistd.h>

namespace kova::tds {
namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t packetSize = 4096; ///< what a client takes until it has agreed on another one
constexpr unsigned char lastOfMessage = 1;

} // namespace

PacketStream::~PacketStream() {
    close(socket_);
}

bool PacketStream::receiveExactly(void* target, std::size_t count) const {
    return count == 0 || recv(socket_, target, count, MSG_WAITALL) == static_cast<ssize_t>(count);
}

std::optional<Message> PacketStream::receive() const {
    Message message{};
    for (;;) {
        unsigned char header[headerSize];
        if (!receiveExactly(header, headerSize))
            return std::nullopt;
        // The length is the only number with its highest byte first.
        const std::size_t length = static_cast<std::size_t>(header[2]) << 8 | header[3];
        if (length < headerSize)
            return std::nullopt;
        message.kind = static_cast<MessageKind>(header[0]);
        const auto begin = message.body.size();
        message.body.resize(begin + length - headerSize);
        if (!receiveExactly(message.body.data() + begin, length - headerSize))
            return std::nullopt;
        if ((header[1] & lastOfMessage) != 0)
            return message;
    }
}

void PacketStream::send(std::string_view part, bool last) const {
    do {
        const auto payload = part.substr(0, packetSize - headerSize);
        part.remove_prefix(payload.size());
        const std::size_t length = payload.size() + headerSize;
        std::string packet(headerSize, '\0');
        packet[0] = static_cast<char>(MessageKind::Response);
        packet[1] = static_cast<char>(last && part.empty() ? lastOfMessage : 0);
        packet[2] = static_cast<char>(length >> 8);
        packet[3] = static_cast<char>(length & 0xFF);
        packet += payload;
        (void)::send(socket_, packet.data(), packet.size(),
                     MSG_NOSIGNAL); // the next receive tells of a failure
    } while (!part.empty());
}

void PacketStream::hangUp() const {
    shutdown(socket_, SHUT_RDWR);
}

} // namespace kova::tds
