#pragma once

namespace kova {

struct HostOptions;

/// Opens the demonstration window and returns the exit status when it closes. Only in builds with Qt.
int runDemonstration(const HostOptions& options);

} // namespace kova
