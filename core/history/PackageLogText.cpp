#include "core/history/PackageLogText.h"

#include <algorithm>

namespace tidemark::PackageLogText {

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isLetterOrDigit(char character) {
    return isDigit(character) || (character >= 'a' && character <= 'z')
           || (character >= 'A' && character <= 'Z');
}

/// True when `text` equals `shape` with a digit in the place of each "d".
bool hasShape(std::string_view text, std::string_view shape) {
    return std::ranges::equal(text, shape, [](char character, char expected) {
        return expected == 'd' ? isDigit(character) : character == expected;
    });
}

int numberIn(std::string_view digits) {
    int number = 0;
    for (const char digit : digits)
        number = number * 10 + (digit - '0');
    return number;
}

bool consistsOf(std::string_view text, std::string_view marks) {
    return !text.empty() && isLetterOrDigit(text.front())
           && std::ranges::all_of(text, [&](char character) {
                  return isLetterOrDigit(character) || marks.contains(character);
              });
}

} // namespace

std::string_view nextLine(std::string_view& log) {
    const std::string_view line = log.substr(0, log.find('\n'));
    log.remove_prefix(std::min(line.size() + 1, log.size()));
    return line;
}

bool isPackage(std::string_view text) {
    return consistsOf(text, "+-.:_");
}

bool isVersion(std::string_view text) {
    return consistsOf(text, ".+-~:_");
}

std::string_view packageName(std::string_view package) {
    return package.substr(0, package.find(':'));
}

std::optional<std::chrono::local_seconds> clockTime(std::string_view date, std::string_view time) {
    using namespace std::chrono;
    if (!hasShape(date, "dddd-dd-dd") || !hasShape(time, "dd:dd:dd"))
        return std::nullopt;
    const year_month_day day(year(numberIn(date.substr(0, 4))),
                             month(static_cast<unsigned>(numberIn(date.substr(5, 2)))),
                             std::chrono::day(static_cast<unsigned>(numberIn(date.substr(8, 2)))));
    const int hour = numberIn(time.substr(0, 2));
    const int minute = numberIn(time.substr(3, 2));
    const int second = numberIn(time.substr(6, 2));
    if (!day.ok() || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    return local_days(day) + hours(hour) + minutes(minute) + seconds(second);
}

} // namespace tidemark::PackageLogText
