#include "platform/linux/KeyNames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tidemark {

namespace {

using Name = std::pair<int, std::string_view>;

/// Numbers of `Qt::KeyboardModifier`, then of `Qt::Key`.
constexpr std::array modifiers{Name{0x1000'0000, "Meta+"}, Name{0x0400'0000, "Ctrl+"},
                               Name{0x0800'0000, "Alt+"}, Name{0x0200'0000, "Shift+"}};
constexpr int allModifiers = 0x1E00'0000;

constexpr std::array named{Name{0x20, "Space"},         Name{0x0100'0000, "Esc"},
                           Name{0x0100'0001, "Tab"},    Name{0x0100'0003, "Backspace"},
                           Name{0x0100'0004, "Return"}, Name{0x0100'0005, "Enter"},
                           Name{0x0100'0006, "Ins"},    Name{0x0100'0007, "Del"},
                           Name{0x0100'0008, "Pause"},  Name{0x0100'0009, "Print"},
                           Name{0x0100'0010, "Home"},   Name{0x0100'0011, "End"},
                           Name{0x0100'0012, "Left"},   Name{0x0100'0013, "Up"},
                           Name{0x0100'0014, "Right"},  Name{0x0100'0015, "Down"},
                           Name{0x0100'0016, "PgUp"},   Name{0x0100'0017, "PgDown"}};

constexpr int firstFunction = 0x0100'0030;
constexpr int lastFunction = firstFunction + 34;

std::string nameOf(int key) {
    if (const auto found = std::ranges::find(named, key, &Name::first); found != named.end())
        return std::string(found->second);
    if (key >= firstFunction && key <= lastFunction)
        return "F" + std::to_string(key - firstFunction + 1);
    return key > 0x20 && key < 0x7F ? std::string(1, static_cast<char>(key)) : std::string();
}

} // namespace

std::string keyName(int combination) {
    const std::string key = nameOf(combination & ~allModifiers);
    if (key.empty())
        return {};
    std::string name;
    for (const auto& [bit, text] : modifiers)
        if (combination & bit)
            name += text;
    return name + key;
}

} // namespace tidemark
