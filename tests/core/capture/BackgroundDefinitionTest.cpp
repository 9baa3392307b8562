#include "core/capture/BackgroundDefinition.h"

#include "core/base/Digest.h"
#include "core/capture/DefinitionDescriptions.h"
#include "tests/support/PropertyLists.h"

#include <gtest/gtest.h>

using namespace tidemark;
using PropertyList::Dictionary;

namespace {

Dictionary read(const std::string& elements) {
    const auto list = PropertyList::parse(test::xmlList("<dict>" + elements + "</dict>"));
    return *list.value().as<Dictionary>();
}

std::string fingerprintOf(const std::string& key, const std::string& value) {
    const auto all = BackgroundDefinition::fingerprints(read("<key>" + key + "</key>" + value));
    const auto found = all.find(key);
    return found == all.end() ? "none" : found->second;
}

BackgroundItem item(const std::string& elements) {
    BackgroundItem result;
    result.safeSettings = BackgroundDefinition::safeSettings(read(elements));
    result.definitionFingerprints = BackgroundDefinition::fingerprints(read(elements));
    return result;
}

std::vector<std::string> changes(const std::string& before, const std::string& after) {
    return DefinitionDescriptions::changeDescriptions(item(before), item(after));
}

} // namespace

TEST(BackgroundDefinition, KeepsOnlySafeSettings) {
    const auto shown = [](const std::string& key, const std::string& value) {
        const auto all = BackgroundDefinition::safeSettings(read("<key>" + key + "</key>" + value));
        const auto found = all.find(key);
        return found == all.end() ? std::string("none") : found->second;
    };
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"RunAtLoad", "<true/>", "Yes"},
        {"RunAtLoad", "<false/>", "No"},
        {"RunAtLoad", "<integer>1</integer>", "No"},
        {"Disabled", "<string>YES</string>", "No"},
        {"KeepAlive", "<true/>", "Yes"},
        {"KeepAlive", "<dict/>", "Conditional"},
        {"KeepAlive", "<array/>", "No"},
        {"StartInterval", "<integer>300</integer>", "300"},
        {"StartInterval", "<integer>0</integer>", "0"},
        {"StartInterval", "<integer>-1</integer>", "none"},
        {"StartInterval", "<real>-0.5</real>", "none"},
        {"StartInterval", "<real>100000</real>", "100000"},
        {"ThrottleInterval", "<real>2.5</real>", "2.5"},
        {"ThrottleInterval", "<real>nan</real>", "none"},
        {"ThrottleInterval", "<real>inf</real>", "none"},
        {"ThrottleInterval", "<string>5</string>", "none"},
        {"ThrottleInterval", "<true/>", "none"},
        {"WorkingDirectory", "<string>/tmp</string>", "none"},
    };
    for (const auto& [key, value, expected] : cases)
        EXPECT_EQ(shown(key, value), expected) << key << value;
    EXPECT_EQ(BackgroundDefinition::safeSettings({}),
              (std::map<std::string, std::string>{
                  {"Disabled", "No"}, {"KeepAlive", "No"}, {"RunAtLoad", "No"}}));
}

TEST(BackgroundDefinition, DigestsOneCanonicalForm) {
    // A stored digest is compared for years: the form below must never change.
    const std::tuple<const char*, std::string, const char*> cases[] = {
        {"Program", "<string>/bin/é\"</string>", R"(["/bin/é\""])"},
        {"RunAtLoad", "<true/>", "[true]"},
        {"RunAtLoad", "<integer>1</integer>", "[1]"},
        {"StartInterval", "<integer>-1</integer>", "[-1]"},
        {"StartInterval", "<real>0.5</real>", "[0.5]"},
        {"Sockets", "<data>AAEC</data>", R"([{"data":"AAEC"}])"},
        {"Sockets", "<date>2001-01-01T00:00:10Z</date>", R"([{"date":10}])"},
        {"EnvironmentVariables",
         "<dict><key>b</key><real>nan</real><key>c</key><array><real>inf</real><true/></array>"
         "<key>a</key><string>x</string></dict>",
         R"([{"a":"x","c":[true]}])"},
        {"EnvironmentVariables", "<dict/>", "[{}]"},
    };
    for (const auto& [key, value, form] : cases)
        EXPECT_EQ(fingerprintOf(key, value), Sha256::hex(form)) << form;
    EXPECT_EQ(fingerprintOf("StartInterval", "<real>nan</real>"), "none");
    EXPECT_EQ(fingerprintOf("Label", "<string>a</string>"), "none");

    const auto absent = BackgroundDefinition::fingerprints({});
    EXPECT_EQ(absent.size(), 3U);
    EXPECT_EQ(absent.at("Disabled"), fingerprintOf("Disabled", "<false/>"));
}

TEST(BackgroundDefinition, DescribesChangesWithValuesOnlyWhereTheyMayBeShown) {
    const std::string conditional = "<key>KeepAlive</key><dict><key>A</key><true/></dict>";
    const auto environment = [](const std::string& value) {
        return "<key>EnvironmentVariables</key><dict><key>A</key><string>" + value
               + "</string></dict>";
    };
    using Lines = std::vector<std::string>;
    EXPECT_EQ(changes(conditional, "<key>KeepAlive</key><true/>"),
              Lines{"Keep running: Conditional → Yes"});
    EXPECT_EQ(changes(conditional, "<key>KeepAlive</key><dict/>"), Lines{"Keep running changed"});
    EXPECT_EQ(changes(environment("secret"), environment("other")),
              Lines{"Environment settings changed"});
    EXPECT_EQ(changes("", "<key>WorkingDirectory</key><string>/tmp</string>"
                          "<key>StartInterval</key><integer>5</integer>"
                          "<key>RunAtLoad</key><true/>"),
              (Lines{"Starts when loaded: No → Yes", "Run interval (seconds) changed",
                     "WorkingDirectory changed"}));
    EXPECT_EQ(changes("", "<key>Disabled</key><false/>"), Lines{});
}
