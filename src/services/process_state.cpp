#include "services/process_state.h"

#include "services/message_box.h"

namespace kova {

ProcessState::ProcessState(Platform services) : platform(std::move(services)) {}
ProcessState::~ProcessState() = default;

ErrorLogger& ProcessState::ErrorLog() {
    std::call_once(loggerMade_, [this] { errorLogger_ = platform.makeErrorLogger(); });
    return *errorLogger_;
}

NumberFormat& ProcessState::numberFormat() {
    if (!numberFormat_)
        numberFormat_ = std::make_unique<NumberFormat>(platform.regional);
    return *numberFormat_;
}

SqlDateFormatter& ProcessState::sqlDateFormatter() {
    if (!sqlDateFormatter_)
        sqlDateFormatter_ = std::make_unique<SqlDateFormatter>(platform.regional);
    return *sqlDateFormatter_;
}

frmMsgBox& ProcessState::messageWindow() {
    if (!messageWindow_)
        messageWindow_ = std::make_unique<frmMsgBox>(*this);
    return *messageWindow_;
}

Recordset ProcessState::query(const Query& query) {
    // The slot may be refilled while the query runs.
    const auto connection = SharedConnection ? SharedConnection : std::make_shared<ClosedConnection>();
    return connection->query(query);
}

void ProcessState::logError(std::string_view label, const std::string& message) {
    ErrorLog().LogError(std::string(label), message, nullptr, 0, "");
}

} // namespace kova
