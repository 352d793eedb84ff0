#pragma once
// What this process has, as Windows tells it.

#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace kova::test {

inline DWORD handles() {
    std::vector<unsigned char> all(1 << 20);
    NtQuerySystemInformation(SystemProcessInformation, all.data(), static_cast<ULONG>(all.size()), nullptr);
    const auto* process = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(all.data());
    while (process->UniqueProcessId != reinterpret_cast<HANDLE>(std::uintptr_t{GetCurrentProcessId()}))
        process = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(
            reinterpret_cast<const unsigned char*>(process) + process->NextEntryOffset);
    return process->HandleCount;
}

/// What a process may lose. Wine's own count of graphics and user objects is always 0.
inline std::map<std::string, std::size_t> resources() {
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    std::size_t windows = 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND, LPARAM count) { return ++*reinterpret_cast<std::size_t*>(count), TRUE; },
        reinterpret_cast<LPARAM>(&windows));
    return {{"user objects", GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)},
            {"graphics objects", GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)},
            {"windows", windows},
            {"handles", handles()},
            {"megabytes", memory.PagefileUsage >> 20}};
}

} // namespace kova::test
