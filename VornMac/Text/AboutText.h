#pragma once

#include <string>

/// The texts of the application's menus and of its About panel. Threads: any.
namespace vorn {

inline constexpr const char* applicationName = "Vorn";
inline constexpr const char* aboutVorn = "About Vorn";
inline constexpr const char* hideVorn = "Hide Vorn";
inline constexpr const char* hideOthers = "Hide Others";
inline constexpr const char* showAll = "Show All";
inline constexpr const char* quitVorn = "Quit Vorn";
inline constexpr const char* editMenu = "Edit";
inline constexpr const char* copyEntry = "Copy";
inline constexpr const char* windowMenu = "Window";
inline constexpr const char* minimizeEntry = "Minimize";
inline constexpr const char* zoomEntry = "Zoom";
inline constexpr const char* closeEntry = "Close";
inline constexpr const char* helpMenu = "Help";
inline constexpr const char* vornHelp = "Vorn Help";
inline constexpr const char* privacy = "Privacy";
inline constexpr const char* notices = "Third-Party Notices";

inline constexpr const char* helpAddress = "https://vorn.example/help";
inline constexpr const char* privacyAddress = "https://vorn.example/privacy";

/// "Version 1.2.3"
std::string versionText(const std::string& version);

} // namespace vorn
