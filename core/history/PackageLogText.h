#pragma once

#include <chrono>
#include <optional>
#include <string_view>

/// The words that the logs of dpkg(1) and apt(8) share.
namespace tidemark::PackageLogText {

/// Takes the first line off `log` and returns it.
std::string_view nextLine(std::string_view& log);

/// A package, with or without its architecture: "libssl3:amd64".
bool isPackage(std::string_view text);
/// "1:2.0~rc1-3+b1"
bool isVersion(std::string_view text);
/// A package without its architecture.
std::string_view packageName(std::string_view package);

/// The clock time of a date such as "2024-05-01" and a time such as "12:00:00"; absent when there
/// is no such time. The zone is that of the machine.
std::optional<std::chrono::local_seconds> clockTime(std::string_view date, std::string_view time);

} // namespace tidemark::PackageLogText
