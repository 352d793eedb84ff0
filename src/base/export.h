#pragma once

/// Marks what the shared library exports; everything else in it stays hidden.
#if defined(__GNUC__)
#define KOVA_API __attribute__((visibility("default")))
#else
#define KOVA_API
#endif
