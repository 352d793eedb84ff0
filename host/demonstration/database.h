#pragma once
#include "shop/host_database.h"

#include <string>

namespace kova {

/// The database of the demonstration: what the options ask for, where "sample" is a file in the user's data
/// folder that keeps the movements from one start to the next. The first start makes it, whole or not at all,
/// and the first of each day fills that day. Throws std::exception when it cannot be read, or an embedded one
/// cannot be written.
HostDatabase openDemonstrationDatabase(const HostOptions& options);

/// The database as a person knows it: the file's path, where there is a file. A connection string is not
/// shown, as it may hold a password.
std::string demonstrationDatabaseName(const HostOptions& options);

} // namespace kova
