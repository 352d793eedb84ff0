#include "c_interface/calls.h"

#include "base/utf8.h"
#include "c_interface/thread_state.h"

#include <cstring>
#include <new>
#include <utility>

namespace kova::c_interface {
namespace {

constexpr std::int32_t OutOfMemory = 7;

kova_status record(kova_status status, std::int32_t number, const char* words,
                   const std::string& sqlState = {}) noexcept {
    try {
        ThreadState& thread = threadState();
        thread.errorNumber = number;
        thread.errorWords = words;
        thread.sqlState = sqlState;
    } catch (const std::bad_alloc&) {
        return KOVA_OUT_OF_MEMORY;
    }
    return status;
}

} // namespace

Refusal::Refusal(kova_status status, const std::string& words) : Error(InvalidCall, words), status_(status) {}

void refuseArgument(const char* words) {
    throw Refusal(KOVA_INVALID_ARGUMENT, words);
}

kova_status currentStatus() noexcept {
    try {
        throw;
    } catch (const Refusal& refusal) {
        return record(refusal.status(), refusal.number(), refusal.what());
    } catch (const DatabaseError& error) {
        return record(KOVA_DATABASE_FAILED, error.number(), error.what(), error.sqlState());
    } catch (const Error& error) {
        return record(KOVA_FAILED, error.number(), error.what());
    } catch (const std::bad_alloc&) {
        return record(KOVA_OUT_OF_MEMORY, OutOfMemory, "Out of memory");
    } catch (const std::exception& error) {
        return record(KOVA_FAILED, 0, error.what());
    } catch (...) {
        return record(KOVA_FAILED, 0, "Unknown error");
    }
}

std::string textOf(const char* text) {
    if (text == nullptr)
        return {};
    std::string result(text);
    if (toUtf8(fromUtf8(result)) != result)
        refuseArgument("A text is not UTF-8");
    return result;
}

const char* handedOut(std::string text) {
    return (threadState().text = std::move(text)).c_str();
}

std::string takeWordsOfFailure() {
    return std::exchange(threadState().wordsOfFailure, {});
}

void setWordsOfFailure(std::string words) {
    threadState().wordsOfFailure = std::move(words);
}

} // namespace kova::c_interface

using namespace kova::c_interface;

const char* kova_last_error() {
    return threadState().errorWords.c_str();
}

int32_t kova_last_error_number() {
    return threadState().errorNumber;
}

const char* kova_last_sql_state() {
    return threadState().sqlState.c_str();
}

int32_t kova_version() {
    return KOVA_VERSION;
}

kova_status kova_fail(const char* words) {
    return guarded([&] { setWordsOfFailure(textOf(words)); });
}
