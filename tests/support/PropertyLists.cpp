#include "tests/support/PropertyLists.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include <plist/plist.h>

namespace tidemark::test {

namespace {

std::string number(std::uint64_t value, int width) {
    std::string bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
    return bytes;
}

std::string assembled(const std::vector<std::string>& objects, int referenceWidth) {
    std::string list = "bplist00";
    std::string offsets;
    for (const auto& object : objects) {
        offsets += number(list.size(), 4);
        list += object;
    }
    const std::size_t table = list.size();
    return list + offsets + std::string(6, '\0') + '\4' + number(std::uint64_t(referenceWidth), 1)
           + number(objects.size(), 8) + number(0, 8) + number(table, 8);
}

} // namespace

std::string xmlList(std::string_view elements) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n"
           + std::string(elements) + "\n</plist>\n";
}

std::string binaryList(std::string_view elements) {
    const std::string xml = xmlList(elements);
    plist_t root = nullptr;
    ::plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &root);
    if (root == nullptr)
        throw std::invalid_argument("libplist does not read " + xml);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    ::plist_to_bin(root, &bytes, &length);
    ::plist_free(root);
    std::string binary(bytes, length);
    std::free(bytes);
    return binary;
}

std::string assembledList(const std::vector<std::string>& objects) {
    return assembled(objects, 1);
}

std::string nestedXml(std::size_t depth) {
    std::string elements;
    for (std::size_t i = 0; i < depth; ++i)
        elements += "<array>";
    elements += "<true/>";
    for (std::size_t i = 0; i < depth; ++i)
        elements += "</array>";
    return xmlList(elements);
}

std::string nestedBinary(std::size_t depth) {
    std::vector<std::string> objects;
    for (std::size_t i = 0; i < depth; ++i)
        objects.push_back('\xA1' + number(i + 1, 4));
    objects.emplace_back("\x09");
    return assembled(objects, 4);
}

} // namespace tidemark::test
