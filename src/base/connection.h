#pragma once
#include <memory>
#include <utility>

namespace kova {

/// Keeps a receiver connected to what it listens to; disconnects it when destroyed. It may outlive both.
class [[nodiscard]] Connection {
  public:
    Connection() = default;
    Connection(Connection&&) noexcept = default;
    Connection& operator=(Connection&& other) noexcept {
        disconnect();
        connected_ = std::move(other.connected_);
        return *this;
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { disconnect(); }

    void disconnect() noexcept {
        if (const auto connected = std::exchange(connected_, {}).lock())
            *connected = false;
    }

  private:
    template <class...>
    friend class Signal;
    explicit Connection(const std::shared_ptr<bool>& connected) : connected_(connected) {}
    std::weak_ptr<bool> connected_;
};

} // namespace kova
