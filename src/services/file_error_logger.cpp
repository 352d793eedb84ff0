#include "services/file_error_logger.h"

#include <cstdio>
#include <fstream>

namespace kova {
namespace {

constexpr std::size_t MostWaiting = 1000;

std::string timeStamp(DateTime time) {
    using namespace std::chrono;
    const year_month_day date(floor<days>(time));
    const hh_mm_ss clock(floor<milliseconds>(time - floor<days>(time)));
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return text;
}

/// One field: what would end a field or a line is written as an escape.
std::string field(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\t':
            result += "\\t";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\\':
            result += "\\\\";
            break;
        default:
            result += c;
        }
    }
    return result;
}

} // namespace

void FileErrorLogger::SetApplicationName(const std::string& name) {
    application_ = name;
}

void FileErrorLogger::SetLogFile(const std::string& path) {
    path_ = path;
    flush();
}

void FileErrorLogger::LogError(const std::string& procedure, const std::string& message, const char* object,
                               std::int32_t number, const std::string& text) {
    try {
        waiting_.push_back(timeStamp(clock_.now()) + '\t' + field(application_) + '\t' + field(procedure) +
                           '\t' + field(message) + '\t' + field(object == nullptr ? "" : object) + '\t' +
                           std::to_string(number) + '\t' + field(text) + '\n');
        if (waiting_.size() > MostWaiting) {
            waiting_.pop_front();
            ++dropped_;
        }
    } catch (const std::exception&) {
        ++dropped_; // no memory for the record: the count is all that can be kept
    }
    flush();
}

void FileErrorLogger::flush() {
    if (path_.empty())
        return;
    try {
        // Opened for each write: a file that was moved away or deleted is begun again, a full disk tried
        // again.
        std::ofstream file(path_, std::ios::app | std::ios::binary);
        if (dropped_ > 0 && file) {
            file << timeStamp(clock_.now()) << "\t" << field(application_) << "\t\t" << dropped_
                 << " records lost\t\t0\t\n"
                 << std::flush;
            if (file)
                dropped_ = 0;
        }
        while (!waiting_.empty() && file) {
            file << waiting_.front() << std::flush;
            if (file)
                waiting_.pop_front();
        }
    } catch (const std::exception&) {
        return; // the records wait for the next try
    }
}

} // namespace kova
