#pragma once
#include <QImage>
#include <QPoint>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace kova {

/// The number of the error for a file that cannot be written.
inline constexpr std::int32_t PathAccessError = 75;

/// Pictures of the windows on the screen, for a film of them: one file each time that they changed, named
/// NNNN-TTT.png by its number and how long it is to be seen in hundredths of a second.
class Recording {
  public:
    /// Makes the folder where it is missing.
    explicit Recording(const std::string& folder);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording();

    /// What is seen from now on, for at least that time; with a spot where a finger touches, on the screen.
    /// Throws Error when the picture before cannot be written.
    void add(std::chrono::milliseconds time, std::optional<QPoint> finger = {});

  private:
    bool write() const;
    std::string folder_;
    QImage picture_;
    std::chrono::milliseconds time_{};
    int number_ = 0;
};

} // namespace kova
