#pragma once

namespace kova::automation {

/// The classes of Windows that carry calls of an interface to other apartments by what the type library says
/// of it: of one with a function table, and of one of events.
inline constexpr const char* TableMarshaller = "{00020424-0000-0000-C000-000000000046}";
inline constexpr const char* DispatchMarshaller = "{00020420-0000-0000-C000-000000000046}";

} // namespace kova::automation
