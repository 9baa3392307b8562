#include "core/base/PropertyList.h"

#include "core/base/PropertyListLimits.h"
#include "core/base/Text.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <limits>
#include <memory>

#include <locale.h>
#include <plist/plist.h>
// Some systems have this header, and declare `uselocale` there.
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace tidemark::PropertyList {

namespace {

struct FreeNode {
    void operator()(void* node) const { ::plist_free(node); }
};
struct FreeBytes {
    void operator()(void* bytes) const { std::free(bytes); }
};
using OwnedNode = std::unique_ptr<void, FreeNode>;
template <class T>
using OwnedBytes = std::unique_ptr<T, FreeBytes>;

/// Makes "." the decimal point of the calling thread for its lifetime: libplist reads reals by the
/// locale.
class PlainNumbers {
public:
    PlainNumbers() : previous(::uselocale(plain())) {}
    ~PlainNumbers() { ::uselocale(previous); }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

private:
    static locale_t plain() {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t previous;
};

/// A scalar as a binary list stores it, type first. The getters of libplist 2.2 truncate some
/// values; this does not.
std::string binaryObject(plist_t node) {
    char* written = nullptr;
    std::uint32_t length = 0;
    ::plist_to_bin(node, &written, &length);
    const OwnedBytes<char> owner(written);
    const std::string_view list(written, written ? length : 0);
    return std::string(list.substr(std::min(binaryMagic.size(), list.size())));
}

/// The getter of libplist returns unsigned bits. Beyond the signed range they are a negative
/// number, unless the list stores the value with sixteen bytes (type and size 0x14).
Value integer(plist_t node) {
    std::uint64_t bits = 0;
    ::plist_get_uint_val(node, &bits);
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (bits > largest && binaryObject(node).starts_with('\x14'))
        return {static_cast<double>(bits)};
    return {static_cast<std::int64_t>(bits)};
}

/// Seconds since 2001 as stored: the getter of libplist truncates them to 32 bits and loses the
/// sign.
Value date(plist_t node) {
    const std::string object = binaryObject(node);
    std::uint64_t bits = 0;
    for (const char byte : object.substr(std::min<std::size_t>(1, object.size()), 8))
        bits = bits << 8 | static_cast<unsigned char>(byte);
    return {Date{std::bit_cast<double>(bits)}};
}

Value text(plist_t node) {
    std::uint64_t length = 0;
    const char* bytes = ::plist_get_string_ptr(node, &length);
    return {textFromBytes({bytes, bytes ? static_cast<std::size_t>(length) : 0})};
}

Value data(plist_t node) {
    std::uint64_t length = 0;
    const char* bytes = ::plist_get_data_ptr(node, &length);
    return {Data{bytes ? std::string(bytes, static_cast<std::size_t>(length)) : std::string()}};
}

Value converted(plist_t node);

Value array(plist_t node) {
    Array values;
    values.reserve(::plist_array_get_size(node));
    plist_array_iter iterator = nullptr;
    ::plist_array_new_iter(node, &iterator);
    const OwnedBytes<void> owner(iterator);
    plist_t item = nullptr;
    for (::plist_array_next_item(node, iterator, &item); item != nullptr;
         ::plist_array_next_item(node, iterator, &item))
        values.push_back(converted(item));
    return {std::move(values)};
}

Value dictionary(plist_t node) {
    Dictionary values;
    plist_dict_iter iterator = nullptr;
    ::plist_dict_new_iter(node, &iterator);
    const OwnedBytes<void> owner(iterator);
    while (true) {
        char* key = nullptr;
        plist_t item = nullptr;
        ::plist_dict_next_item(node, iterator, &key, &item);
        const OwnedBytes<char> ownedKey(key);
        if (item == nullptr)
            return {std::move(values)};
        values.emplace(textFromBytes(key ? key : ""), converted(item));
    }
}

/// The recursion is bounded: `refusal` has checked the depth.
Value converted(plist_t node) {
    switch (::plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        ::plist_get_bool_val(node, &value);
        return {value != 0};
    }
    case PLIST_UINT:
        return integer(node);
    case PLIST_REAL: {
        double value = 0;
        ::plist_get_real_val(node, &value);
        return {value};
    }
    case PLIST_STRING:
        return text(node);
    case PLIST_DATA:
        return data(node);
    case PLIST_DATE:
        return date(node);
    case PLIST_ARRAY:
        return array(node);
    case PLIST_DICT:
        return dictionary(node);
    default:
        return {Other{}};
    }
}

} // namespace

const Value* find(const Dictionary& dictionary, std::string_view key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? nullptr : &found->second;
}

std::expected<Value, Failure> parse(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark))
        bytes.remove_prefix(byteOrderMark.size());
    if (const auto reason = refusal(bytes))
        return std::unexpected(*reason);

    // libplist reads a few bytes past the end in places, so it gets a copy that ends with a NUL.
    const std::string terminated(bytes);
    const auto length = static_cast<std::uint32_t>(terminated.size());
    plist_t root = nullptr;
    if (bytes.starts_with(binaryMagic)) {
        ::plist_from_bin(terminated.c_str(), length, &root);
    } else {
        const PlainNumbers plain;
        ::plist_from_xml(terminated.c_str(), length, &root);
    }
    const OwnedNode owner(root);
    if (!root)
        return std::unexpected(Failure::malformed);
    return converted(root);
}

} // namespace tidemark::PropertyList
