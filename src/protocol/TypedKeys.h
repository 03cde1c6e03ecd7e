// Keys that a client's window receives while the client records a macro or captures a key: object and members by which
// it tells the engine of them. resources/dbus/org.vorn.TypedKeys1.xml says what each member takes.
#pragma once

namespace vorn::typedKeys {

inline constexpr const char* busName = "org.vorn.TypedKeys";
inline constexpr const char* objectPath = "/org/vorn/TypedKeys";
inline constexpr const char* interface = "org.vorn.TypedKeys1";

namespace methods {
inline constexpr const char* Type = "Type";
}  // namespace methods

namespace errors {
inline constexpr const char* BadArgument = "org.vorn.TypedKeys1.Error.BadArgument";
// The caller neither records nor captures.
inline constexpr const char* NotListening = "org.vorn.TypedKeys1.Error.NotListening";
}  // namespace errors

}  // namespace vorn::typedKeys
