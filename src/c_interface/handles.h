#pragma once
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace kova::c_interface {

/// A number that no handle of the process has had before; never 0.
inline std::uintptr_t nextHandle() {
    static std::atomic<std::uintptr_t> last = 0;
    return ++last;
}

/// The objects behind one kind of handle. Handles are numbers in the dress of a pointer, so that one of
/// another kind, or of an object that has gone, is recognized and never followed. Any thread may use it.
template <class Handle, class Object>
class Handles {
  public:
    Handle add(std::shared_ptr<Object> object) {
        const std::lock_guard lock(mutex_);
        const std::uintptr_t number = nextHandle();
        objects_.emplace(number, std::move(object));
        return reinterpret_cast<Handle>(number); // NOLINT(performance-no-int-to-ptr): nobody follows it
    }
    /// Null for a handle that has no object.
    [[nodiscard]] std::shared_ptr<Object> find(Handle handle) const {
        const std::lock_guard lock(mutex_);
        const auto found = objects_.find(reinterpret_cast<std::uintptr_t>(handle));
        return found == objects_.end() ? nullptr : found->second;
    }
    /// The object goes with whoever takes it.
    std::shared_ptr<Object> remove(Handle handle) {
        const std::lock_guard lock(mutex_);
        auto removed = objects_.extract(reinterpret_cast<std::uintptr_t>(handle));
        return removed.empty() ? nullptr : std::move(removed.mapped());
    }

  private:
    mutable std::mutex mutex_;
    std::unordered_map<std::uintptr_t, std::shared_ptr<Object>> objects_;
};

} // namespace kova::c_interface
