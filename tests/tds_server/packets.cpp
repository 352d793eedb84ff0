#include "packets.h"

#include <sys/socket.h>
#include <unistd.h>

namespace kova::test {
namespace {

constexpr std::size_t headerSize = 8;
constexpr unsigned char lastOfMessage = 1;

std::size_t lengthIn(const unsigned char* header) {
    return static_cast<std::size_t>(header[2]) << 8 |
           header[3]; // the only number with its highest byte first
}

} // namespace

PacketStream::~PacketStream() {
    close(socket_);
}

bool PacketStream::receiveExactly(char* target, std::size_t count) const {
    while (count > 0) {
        const auto received = recv(socket_, target, count, 0);
        if (received <= 0)
            return false;
        target += received;
        count -= static_cast<std::size_t>(received);
    }
    return true;
}

std::optional<Message> PacketStream::receive() {
    Message message{};
    for (;;) {
        unsigned char header[headerSize];
        if (!receiveExactly(reinterpret_cast<char*>(header), headerSize) || lengthIn(header) < headerSize)
            return std::nullopt;
        message.kind = static_cast<MessageKind>(header[0]);
        const auto begin = message.body.size();
        const auto count = lengthIn(header) - headerSize;
        message.body.resize(begin + count);
        if (!receiveExactly(message.body.data() + begin, count))
            return std::nullopt;
        if ((header[1] & lastOfMessage) != 0)
            return message;
    }
}

void PacketStream::sendPacket(std::string_view payload, bool last) {
    const std::size_t length = payload.size() + headerSize;
    std::string packet{static_cast<char>(MessageKind::Response),
                       static_cast<char>(last ? lastOfMessage : 0),
                       static_cast<char>(length >> 8),
                       static_cast<char>(length & 0xFF),
                       0,
                       0,
                       static_cast<char>(number_++),
                       0};
    packet += payload;
    for (std::string_view rest = packet; !rest.empty();) {
        const auto sent = send(socket_, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return; // the next receive tells
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
}

void PacketStream::add(std::string_view bytes) {
    pending_ += bytes;
    const std::size_t payload = packetSize_ - headerSize;
    std::string_view rest = pending_;
    for (; rest.size() > payload; rest.remove_prefix(payload)) // the last packet is never empty
        sendPacket(rest.substr(0, payload), false);
    pending_.erase(0, pending_.size() - rest.size());
}

void PacketStream::finish() {
    sendPacket(pending_, true);
    pending_.clear();
    number_ = 1;
}

void PacketStream::sendSoFar() {
    sendPacket(pending_, false);
    pending_.clear();
}

void PacketStream::hangUp() const {
    shutdown(socket_, SHUT_RDWR);
}

} // namespace kova::test
