#pragma once
#include <memory>

class QApplication;

namespace kova {

/// An application for a process that has none; null where it has one already. Throws Error when there is no
/// display, or when the application that is there has no widgets or belongs to another thread.
std::unique_ptr<QApplication> makeApplication();

} // namespace kova
