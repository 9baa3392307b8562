#pragma once

#include "app/ports/LoginItem.h"
#include "core/base/KeyFile.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// The login item as a file that desktops read when the session begins (XDG Desktop Application
/// Autostart). Settings of desktops turn it off by keys in the same file.
class AutostartItem final : public LoginItem {
public:
    struct Places {
        /// The folder of the user, whose files have precedence.
        std::filesystem::path own;
        /// The folders of the system, the one with precedence first.
        std::vector<std::filesystem::path> shared;

        static Places current();
    };

    /// `command` is the absolute path of the program and its arguments.
    AutostartItem(Places places, std::vector<std::string> command)
        : places(std::move(places)), command(std::move(command)) {}

    Status status() const override;
    void add() override;
    QCoro::Task<void> remove() override;
    std::optional<std::filesystem::path> file() const override { return path(); }

    /// A command as the value of the key "Exec". Throws `Error` for one that can't be written
    /// there.
    static std::string quoted(const std::vector<std::string>& command);

private:
    std::filesystem::path path() const;
    /// The entry of the system with the same name.
    std::optional<KeyFile> sharedEntry() const;
    void write(const std::string& text) const;

    const Places places;
    const std::vector<std::string> command;
};

} // namespace tidemark
