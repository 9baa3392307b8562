#pragma once

#include <chrono>
#include <optional>
#include <string_view>

/// Parses the elements that the logs of dpkg(1) and apt(8) have in common.
namespace tidemark::PackageLogText {

/// Removes the first line from `log` and returns it.
std::string_view nextLine(std::string_view& log);

/// True for the name of a package, with or without its architecture: "libssl3:amd64".
bool isPackage(std::string_view text);
/// True for a version such as "1:2.0~rc1-3+b1".
bool isVersion(std::string_view text);
/// The name of a package without its architecture.
std::string_view packageName(std::string_view package);

/// The clock time of a date such as "2024-05-01" and a time such as "12:00:00"; absent when there
/// is no such time. The zone is that of the machine.
std::optional<std::chrono::local_seconds> clockTime(std::string_view date, std::string_view time);

} // namespace tidemark::PackageLogText
