#pragma once
#include "base/utf16.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kova::tds {

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
    /// Sends half of the first of those packets.
    void sendHalf(std::string_view part) const;
    /// Makes all waiting end; the only operation for other threads.
    void hangUp() const;

  private:
    void sendBytes(std::string_view bytes) const;
    bool receiveExactly(void* target, std::size_t count) const;
    int socket_;
};

static_assert(std::endian::native == std::endian::little, "numbers travel with their lowest byte first");

inline std::string utf16Bytes(std::string_view text) {
    const std::u16string wide = toUtf16(text);
    return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(char16_t)};
}

/// Builds what goes over the wire.
class WireWriter {
  public:
    template <class Number>
    WireWriter& number(Number value) {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
        return *this;
    }
    WireWriter& byte(unsigned value) { return number(static_cast<std::uint8_t>(value)); }
    WireWriter& word(std::size_t value) { return number(static_cast<std::uint16_t>(value)); }
    WireWriter& bytes(std::string_view raw) {
        bytes_.append(raw);
        return *this;
    }
    /// The count of characters in one byte, then the text.
    WireWriter& shortText(std::string_view text) {
        const auto wide = utf16Bytes(text);
        return byte(static_cast<unsigned>(wide.size() / 2)).bytes(wide);
    }
    WireWriter& longText(std::string_view text) {
        const auto wide = utf16Bytes(text);
        return word(wide.size() / 2).bytes(wide);
    }
    [[nodiscard]] const std::string& built() const { return bytes_; }
    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    void cut(std::size_t size) { bytes_.resize(size); }

  private:
    std::string bytes_;
};

/// Takes apart what came over the wire. Throws std::runtime_error when it ends too early.
class WireReader {
  public:
    explicit WireReader(std::string_view bytes) : rest_(bytes) {}
    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    std::string_view bytes(std::size_t count) {
        if (count > rest_.size())
            throw std::runtime_error("a message ends too early");
        const auto taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }
    template <class Number>
    Number number() {
        Number value;
        std::memcpy(&value, bytes(sizeof value).data(), sizeof value);
        return value;
    }
    unsigned byte() { return number<std::uint8_t>(); }
    std::size_t word() { return number<std::uint16_t>(); }
    std::string text(std::size_t characters) {
        std::u16string wide(characters, u'\0');
        std::memcpy(wide.data(), bytes(characters * 2).data(), characters * 2);
        std::string result;
        appendUtf16(result, wide);
        return result;
    }

  private:
    std::string_view rest_;
};

} // namespace kova::tds
