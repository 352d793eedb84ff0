#include "adapters/qt/turns.h"

#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <cstring>
#include <cxxabi.h>
#include <exception>
#include <new>
#include <utility>
#include <vector>

// g++ says so by a macro, clang by a feature, of which toolkits make a macro that is always no.
#if defined(__SANITIZE_ADDRESS__)
#define KOVA_ADDRESSES_CHECKED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KOVA_ADDRESSES_CHECKED
#endif
#endif
#ifdef KOVA_ADDRESSES_CHECKED
#include <sanitizer/common_interface_defs.h>
#endif

namespace kova {
namespace {

constexpr std::size_t StackSize = std::size_t{8} << 20U; // as a thread's; memory comes as it is used

} // namespace

struct Turns::State {
    /// A stack whose end is guarded.
    class Stack {
      public:
        Stack() : guard_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
            memory_ = mmap(nullptr, StackSize, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK | MAP_NORESERVE, -1, 0);
            if (memory_ == MAP_FAILED)
                throw std::bad_alloc();
            mprotect(memory_, guard_, PROT_NONE);
        }
        Stack(const Stack&) = delete;
        Stack& operator=(const Stack&) = delete;
        ~Stack() { munmap(memory_, StackSize); }
        [[nodiscard]] void* bottom() const { return static_cast<char*>(memory_) + guard_; }
        [[nodiscard]] std::size_t size() const { return StackSize - guard_; }

      private:
        std::size_t guard_;
        void* memory_;
    };

    /// Something that runs on a stack of its own, and goes on where it left.
    class Coroutine {
        /// What the C++ run time keeps of a thread's exceptions; each stack has its own.
        struct Exceptions {
            void* caught = nullptr;
            unsigned int uncaught = 0;
        };

        void exchangeExceptions(Exceptions& other) {
            auto* const present = reinterpret_cast<Exceptions*>(abi::__cxa_get_globals());
            std::swap(*present, other);
        }

      public:
        Coroutine(std::unique_ptr<Stack> stack, std::function<void()> body)
            : stack_(std::move(stack)), body_(std::move(body)) {
            getcontext(&inside_);
            inside_.uc_stack.ss_sp = stack_->bottom();
            inside_.uc_stack.ss_size = stack_->size();
            inside_.uc_link = nullptr;
            const auto address = reinterpret_cast<std::uintptr_t>(this);
            makecontext(&inside_, reinterpret_cast<void (*)()>(begin), 2,
                        static_cast<unsigned int>(address >> 32U), static_cast<unsigned int>(address));
        }
        /// Runs until it leaves or has finished.
        void enter() {
            beforeSwitch(&outsideFake_, stack_->bottom(), stack_->size());
            exchangeExceptions(exceptions_);
            swapcontext(&outside_, &inside_);
            exchangeExceptions(exceptions_);
            afterSwitch(outsideFake_, nullptr, nullptr);
        }
        /// From inside: goes back to who entered, until the next `enter`.
        void leave() {
            beforeSwitch(finished_ ? nullptr : &insideFake_, outsideBottom_, outsideSize_);
            swapcontext(&inside_, &outside_);
            afterSwitch(insideFake_, &outsideBottom_, &outsideSize_);
        }
        [[nodiscard]] bool finished() const { return finished_; }
        /// When it has finished.
        std::unique_ptr<Stack> takeStack() { return std::move(stack_); }
        std::function<bool()> over;   ///< what it waits for
        std::function<void()> errand; ///< what it wants done outside
        std::exception_ptr failure;   ///< of that, or of its body

      private:
        static void begin(unsigned int high, unsigned int low) {
            const std::uintptr_t address = (std::uintptr_t{high} << 32U) | low; // makecontext takes int alone
            auto* const self = reinterpret_cast<Coroutine*>(address); // NOLINT(performance-no-int-to-ptr)
            self->afterSwitch(nullptr, &self->outsideBottom_, &self->outsideSize_);
            try {
                self->body_();
            } catch (...) {
                self->failure = std::current_exception();
            }
            self->finished_ = true;
            self->leave();
        }

#ifdef KOVA_ADDRESSES_CHECKED
        static void beforeSwitch(void** fake, const void* bottom, std::size_t size) {
            __sanitizer_start_switch_fiber(fake, bottom, size);
        }
        static void afterSwitch(void* fake, const void** bottom, std::size_t* size) {
            __sanitizer_finish_switch_fiber(fake, bottom, size);
        }
#else
        static void beforeSwitch(void**, const void*, std::size_t) {}
        static void afterSwitch(void*, const void**, std::size_t*) {}
#endif

        std::unique_ptr<Stack> stack_;
        std::function<void()> body_;
        ucontext_t inside_{}, outside_{};
        Exceptions exceptions_;
        bool finished_ = false;
        void *insideFake_ = nullptr, *outsideFake_ = nullptr;
        const void* outsideBottom_ = nullptr;
        std::size_t outsideSize_ = 0;
    };

    Coroutine* running = nullptr; ///< whose stack this is; null on the host's
    int errands = 0;              ///< that are being done
    std::vector<std::unique_ptr<Coroutine>> waiting;

    std::unique_ptr<Stack> spare;

    void begin(const std::function<void()>& body) {
        resume(std::make_unique<Coroutine>(spare ? std::move(spare) : std::make_unique<Stack>(), body));
    }

    /// Until it waits or has finished.
    void resume(std::unique_ptr<Coroutine> coroutine) {
        Coroutine* const before = std::exchange(running, coroutine.get());
        for (;;) {
            coroutine->enter();
            if (!coroutine->errand)
                break;
            running = before;
            ++errands;
            try {
                std::exchange(coroutine->errand, nullptr)();
            } catch (...) {
                coroutine->failure = std::current_exception();
            }
            --errands;
            running = coroutine.get();
        }
        running = before;
        if (!coroutine->finished()) {
            waiting.push_back(std::move(coroutine));
            return;
        }
        spare = coroutine->takeStack();
        if (coroutine->failure)
            std::rethrow_exception(coroutine->failure);
    }
};

Turns::Turns() : state_(std::make_unique<State>()) {}
Turns::~Turns() = default;

void Turns::run(const std::function<void()>& handle) {
    if (inside() || state_->errands > 0) {
        handle();
        return;
    }
    state_->begin(handle);
    while (waiting() && state_->waiting.back()->over()) {
        auto next = std::move(state_->waiting.back());
        state_->waiting.pop_back();
        state_->resume(std::move(next));
    }
}

bool Turns::inside() const {
    return state_->running != nullptr;
}

bool Turns::waiting() const {
    return !state_->waiting.empty();
}

void Turns::waitUntil(const std::function<bool()>& over) {
    if (over())
        return;
    auto& self = *state_->running;
    self.over = over;
    self.leave();
}

void Turns::onHostStack(const std::function<void()>& call) {
    if (!inside()) {
        call();
        return;
    }
    auto& self = *state_->running;
    self.errand = call;
    self.leave();
    if (const auto failure = std::exchange(self.failure, nullptr))
        std::rethrow_exception(failure);
}

} // namespace kova
