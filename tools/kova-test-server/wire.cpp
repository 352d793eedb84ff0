#include "wire.h"

#include <sys/socket.h>
#include <unistd.h>

namespace kova::tds {
namespace {

constexpr std::size_t HeaderSize = 8;
constexpr std::size_t PacketSize = 4096; ///< what a client takes until it has agreed on another one
constexpr unsigned char LastOfMessage = 1;

std::string packetOf(std::string_view payload, bool last) {
    const std::size_t length = payload.size() + HeaderSize;
    std::string packet(HeaderSize, '\0');
    packet[0] = static_cast<char>(MessageKind::Response);
    packet[1] = static_cast<char>(last ? LastOfMessage : 0);
    packet[2] = static_cast<char>(length >> 8);
    packet[3] = static_cast<char>(length & 0xFF);
    packet += payload;
    return packet;
}

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
        unsigned char header[HeaderSize];
        if (!receiveExactly(header, HeaderSize))
            return std::nullopt;
        // The length is the only number with its highest byte first.
        const std::size_t length = static_cast<std::size_t>(header[2]) << 8 | header[3];
        if (length < HeaderSize)
            return std::nullopt;
        message.kind = static_cast<MessageKind>(header[0]);
        const auto begin = message.body.size();
        message.body.resize(begin + length - HeaderSize);
        if (!receiveExactly(message.body.data() + begin, length - HeaderSize))
            return std::nullopt;
        if ((header[1] & LastOfMessage) != 0)
            return message;
    }
}

void PacketStream::send(std::string_view part, bool last) const {
    do {
        const auto payload = part.substr(0, PacketSize - HeaderSize);
        part.remove_prefix(payload.size());
        sendBytes(packetOf(payload, last && part.empty()));
    } while (!part.empty());
}

void PacketStream::sendHalf(std::string_view part) const {
    const auto packet = packetOf(part.substr(0, PacketSize - HeaderSize), false);
    sendBytes(std::string_view(packet).substr(0, packet.size() / 2));
}

void PacketStream::sendBytes(std::string_view bytes) const {
    (void)::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL); // the next receive tells of a failure
}

void PacketStream::hangUp() const {
    shutdown(socket_, SHUT_RDWR);
}

} // namespace kova::tds
