#pragma once

namespace kova {

/// The files of resources/database, made into sources by the build (cmake/EmbedText.cmake).
extern const char* const kovaSchemaSql;
extern const char* const kovaSampleSql;

} // namespace kova
