#include "core/history/PackageLogReport.h"

#include "core/base/Iso8601.h"
#include "core/base/JsonWriter.h"
#include "core/base/Text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <unordered_map>
#include <vector>

namespace tidemark::PackageLogReport {

namespace {

/// Far beyond any line that dpkg writes, but for names of configuration files.
constexpr std::size_t longestLine = 8192;

constexpr std::string_view stampShape = "dddd-dd-dd dd:dd:dd";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isLetterOrDigit(char character) {
    return isDigit(character) || (character >= 'a' && character <= 'z')
           || (character >= 'A' && character <= 'Z');
}

/// "2024-05-01 12:00:00" by its shape; whether there is such a time shows when it is read.
bool isStamp(std::string_view text) {
    return std::ranges::equal(text, stampShape, [](char character, char shape) {
        return shape == 'd' ? isDigit(character) : character == shape;
    });
}

bool consistsOf(std::string_view text, std::string_view marks) {
    return !text.empty() && isLetterOrDigit(text.front())
           && std::ranges::all_of(text, [&](char character) {
                  return isLetterOrDigit(character) || marks.contains(character);
              });
}

bool isPackage(std::string_view text) {
    return consistsOf(text, "+-.:_");
}
bool isVersion(std::string_view text) {
    return consistsOf(text, ".+-~:_");
}

struct Line {
    std::string_view stamp;
    /// What follows the time, split at each blank.
    std::vector<std::string_view> words;
};

/// Absent for a line that dpkg does not write.
std::optional<Line> lineFrom(std::string_view text) {
    const bool isText = std::ranges::none_of(text, [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    });
    if (text.size() > longestLine || !isText || !isStamp(text.substr(0, stampShape.size()))
        || !isValidUtf8(text))
        return std::nullopt;
    Line line{text.substr(0, stampShape.size()), {}};
    text.remove_prefix(stampShape.size());
    while (text.starts_with(' ')) {
        text.remove_prefix(1);
        line.words.push_back(text.substr(0, text.find(' ')));
        text.remove_prefix(line.words.back().size());
    }
    if (line.words.empty() || !text.empty())
        return std::nullopt;
    return line;
}

/// Takes the first line off `log`.
std::string_view nextLine(std::string_view& log) {
    const std::string_view line = log.substr(0, log.find('\n'));
    log.remove_prefix(std::min(line.size() + 1, log.size()));
    return line;
}

int numberAt(std::string_view stamp, std::size_t place, std::size_t digits) {
    int number = 0;
    for (const char digit : stamp.substr(place, digits))
        number = number * 10 + (digit - '0');
    return number;
}

/// The time of a line with the offset that the zone of this machine had then; of a time that does
/// not exist the numbers stay, so that whoever reads it finds out.
std::string withOffset(std::string_view stamp) {
    std::tm local{};
    local.tm_year = numberAt(stamp, 0, 4) - 1900;
    local.tm_mon = numberAt(stamp, 5, 2) - 1;
    local.tm_mday = numberAt(stamp, 8, 2);
    local.tm_hour = numberAt(stamp, 11, 2);
    local.tm_min = numberAt(stamp, 14, 2);
    local.tm_sec = numberAt(stamp, 17, 2);
    local.tm_isdst = -1;
    std::mktime(&local);
    const long minutes = std::abs(local.tm_gmtoff) / 60;
    std::array<char, 32> offset{};
    std::snprintf(offset.data(), offset.size(), "%c%02ld:%02ld", local.tm_gmtoff < 0 ? '-' : '+',
                  minutes / 60, minutes % 60);
    std::string text(stamp);
    text[10] = 'T';
    return text + offset.data();
}

/// A date as the lines of the log have theirs, to be compared as text; empty, which is before
/// them all, for one that has no such form.
std::string stampOf(Date date) {
    const double whole = date.secondsSince1970();
    // The years that have four digits, wherever the zone lies.
    if (!(whole > -62'000'000'000.0 && whole < 253'000'000'000.0))
        return {};
    const auto time = static_cast<std::time_t>(whole);
    std::tm local{};
    std::array<char, 32> text{};
    if (!::localtime_r(&time, &local))
        return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local)};
}

class Reader {
public:
    explicit Reader(Date since)
        : out([this](std::string_view piece) { text += piece; }), sinceStamp(stampOf(since)) {}

    std::string read(std::string_view log) {
        out.beginObject();
        out.key("SPInstallHistoryDataType");
        out.beginArray();
        while (!log.empty())
            if (const std::string_view line = nextLine(log); !line.empty() && !take(line))
                noteBroken();
        out.endArray();
        out.endObject();
        out.finish();
        return std::move(text);
    }

private:
    /// False for a line that can't be understood.
    bool take(std::string_view bytes) {
        const auto line = lineFrom(bytes);
        if (!line)
            return false;
        isRecent = line->stamp >= sinceStamp;
        const auto& words = line->words;
        if (words.front() == "install" || words.front() == "upgrade")
            return begin(words);
        if (words.front() == "status" && words.size() > 1 && words[1] == "installed")
            return end(*line);
        return true;
    }

    /// "upgrade NAME OLD NEW"
    bool begin(const std::vector<std::string_view>& words) {
        if (words.size() != 4 || !isPackage(words[1]) || !isVersion(words[3]))
            return false;
        underway[std::string(words[1])] = words[3];
        return true;
    }

    /// "status installed NAME VERSION", which also follows on triggers of other packages and on
    /// an upgrade that was taken back.
    bool end(const Line& line) {
        const auto& words = line.words;
        if (words.size() != 4 || !isPackage(words[2]) || !isVersion(words[3]))
            return false;
        const auto begun = underway.find(std::string(words[2]));
        if (begun == underway.end() || begun->second != words[3])
            return true;
        underway.erase(begun);
        writeEntry(line.stamp, words[2].substr(0, words[2].find(':')), words[3]);
        return true;
    }

    void writeEntry(std::string_view stamp, std::string_view name, std::string_view version) {
        out.beginObject();
        const auto write = [this](std::string_view key, std::string_view value) {
            out.key(key);
            out.text(value);
        };
        write("_name", name);
        write("install_version", version);
        write("install_date", withOffset(stamp));
        write("package_source", "package_source_other");
        out.endObject();
    }

    void noteBroken() {
        if (isRecent)
            out.null();
    }

    std::string text;
    json::JsonWriter out;
    std::string sinceStamp;
    /// The last line that could be understood is from the time that is asked for.
    bool isRecent = true;
    /// The versions that packages are about to have.
    std::unordered_map<std::string, std::string> underway;
};

} // namespace

std::string make(std::string_view log, Date since) {
    return Reader(since).read(log);
}

bool beginsBefore(std::string_view log, Date date) {
    while (!log.empty()) {
        const auto line = lineFrom(nextLine(log));
        const auto time = line ? iso8601Date(withOffset(line->stamp)) : std::nullopt;
        if (time)
            return *time < date;
    }
    return false;
}

} // namespace tidemark::PackageLogReport
