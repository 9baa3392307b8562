#include "core/history/PackageLogReport.h"

#include "core/base/Calendar.h"
#include "core/base/Text.h"
#include "core/history/InstallationReport.h"
#include "core/history/PackageLogText.h"

#include <algorithm>

namespace tidemark::PackageLogReport {

namespace {

using namespace PackageLogText;
using std::chrono::local_seconds;

/// In bytes. Apart from names of configuration files, dpkg writes no line that is nearly as long.
constexpr std::size_t longestLine = 8192;

constexpr std::string_view stampShape = "2024-05-01 12:00:00";
constexpr std::size_t dateSize = 10;

struct Line {
    local_seconds time;
    /// The rest of the line after the time, split at each blank.
    std::vector<std::string_view> words;
};

/// Absent for a line that is not in the format of dpkg.
std::optional<Line> lineFrom(std::string_view text) {
    const bool isText = std::ranges::none_of(text, [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    });
    if (text.size() > longestLine || text.size() < stampShape.size() || text[dateSize] != ' '
        || !isText || !isValidUtf8(text))
        return std::nullopt;
    const auto time = clockTime(text.substr(0, dateSize),
                                text.substr(dateSize + 1, stampShape.size() - dateSize - 1));
    if (!time)
        return std::nullopt;
    Line line{*time, {}};
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

class Reader {
public:
    Reader(const std::vector<PackageTransaction>& transactions, Date since)
        : transactions(transactions), start(calendar.clockAt(since)) {}

    std::string read(std::string_view log) {
        while (!log.empty())
            if (const std::string_view line = nextLine(log); !line.empty() && !take(line))
                noteBroken();
        return report.finish();
    }

private:
    /// False for a line that can't be parsed.
    bool take(std::string_view bytes) {
        const auto line = lineFrom(bytes);
        if (!line)
            return false;
        isRecent = line->time >= start;
        const auto& words = line->words;
        if (words.front() == "startup")
            run = line->time;
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

    /// "status installed NAME VERSION". dpkg also writes it after triggers of other packages and
    /// after an upgrade was rolled back.
    bool end(const Line& line) {
        const auto& words = line.words;
        if (words.size() != 4 || !isPackage(words[2]) || !isVersion(words[3]))
            return false;
        const auto begun = underway.find(std::string(words[2]));
        if (begun == underway.end() || begun->second != words[3])
            return true;
        underway.erase(begun);
        writeEntry(line.time, std::string(packageName(words[2])), std::string(words[3]));
        return true;
    }

    void writeEntry(local_seconds time, const std::string& name, const std::string& version) {
        const std::string key = name + " " + version;
        const auto* transaction =
            AptHistory::transactionOf(transactions, key, calendar.momentOf(time));
        const Date date = transaction ? transaction->start : calendar.momentOf(startOfRun(time));
        report.add(name, version, date, transaction && transaction->isAutomatic.at(key));
    }

    /// The start of the present run of dpkg. A start more than a day ago belongs to another run,
    /// since the log can lack lines; then `time` itself is returned.
    local_seconds startOfRun(local_seconds time) const {
        return run && *run <= time && time - *run < std::chrono::days(1) ? *run : time;
    }

    void noteBroken() {
        if (isRecent)
            report.addUnreadable();
    }

    InstallationReport report;
    const std::vector<PackageTransaction>& transactions;
    const Calendar calendar;
    /// Start of the requested period.
    local_seconds start;
    /// Start of the present run of dpkg.
    std::optional<local_seconds> run;
    /// True when the last line that could be parsed is within the requested period.
    bool isRecent = true;
    /// The versions that are being installed, by package.
    std::unordered_map<std::string, std::string> underway;
};

} // namespace

std::string make(std::string_view log, const std::vector<PackageTransaction>& transactions,
                 Date since) {
    return Reader(transactions, since).read(log);
}

bool beginsBefore(std::string_view log, Date date) {
    while (!log.empty())
        if (const auto line = lineFrom(nextLine(log)))
            return Calendar().momentOf(line->time) < date;
    return false;
}

} // namespace tidemark::PackageLogReport
