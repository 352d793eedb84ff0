#pragma once

/// Marks what the shared library exports; everything else in it stays hidden.
#if defined(_WIN32) && defined(KOVA_EXPORTS)
#define KOVA_API __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define KOVA_API __attribute__((visibility("default")))
#else
#define KOVA_API
#endif
