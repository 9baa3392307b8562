#include "core/base/Text.h"

#include "core/base/Base64.h"
#include "core/base/Characters.h"
#include "core/base/Collation.h"
#include "core/base/Digest.h"
#include "core/base/PhraseSearch.h"
#include "core/base/Uuid.h"

#include <map>
#include <set>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace tidemark;

TEST(Text, FormatsBytesInDecimalUnits) {
    const std::pair<std::int64_t, const char*> cases[] = {
        {0, "Zero KB"},
        {1, "1 byte"},
        {2, "2 bytes"},
        {999, "999 bytes"},
        {1'000, "1 KB"},
        {1'499, "1 KB"},
        {1'500, "2 KB"},
        {999'499, "999 KB"},
        {999'500, "1 MB"},
        {1'500'000, "1.5 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {1'230'000'000, "1.23 GB"},
        {1'200'000'000, "1.2 GB"},
        {5'000'000'000'000, "5 TB"},
        {INT64_MAX, "9.22 EB"},
        {-1'500'000, "-1.5 MB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(byteString(bytes), text) << bytes;
    EXPECT_EQ(signedBytes(0), "+Zero KB");
    EXPECT_EQ(signedBytes(2'000), "+2 KB");
    EXPECT_EQ(signedBytes(-2'000), "\u22122 KB");
    EXPECT_EQ(signedBytes(INT64_MIN), "\u22129.22 EB");
}

TEST(Text, WritesDoublesShortly) {
    const std::pair<double, const char*> cases[] = {
        {1700000000, "1700000000.0"},
        {-0.0, "-0.0"},
        {0.1, "0.1"},
        {0.0001, "0.0001"},
        {0.00001, "1e-05"},
        {0x1p53, "9007199254740992.0"},
        {0x1p54, "1.8014398509481984e+16"},
        {1700000000.123456, "1700000000.123456"},
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(shortestText(value), text);
}

TEST(Text, SplitsPaths) {
    const std::map<std::string, std::string> lastComponents = {
        {"/a/.Trash", ".Trash"},
        {"/a/.Trash/", ".Trash"},
        {"/.Trash/b", "b"},
        {"/", "/"},
        {"//", "/"},
        {"", ""},
        {"a", "a"},
    };
    for (const auto& [path, last] : lastComponents)
        EXPECT_EQ(lastPathComponent(path), last) << path;
    EXPECT_TRUE(isBelow("/a/b", "/a"));
    EXPECT_TRUE(isBelow("/a", "/"));
    EXPECT_FALSE(isBelow("/", "/"));
    for (const char* other : {"/a", "/ab", "/", "", "/b/a/b"})
        EXPECT_FALSE(isBelow(other, "/a")) << other;
}

TEST(Text, TrimsUnicodeWhiteSpace) {
    const std::pair<std::string, std::string> cases[] = {
        {" \t\r\n a b \u00A0\u3000\u2028", "a b"},
        {"\u200Ba\u200B", "\u200Ba\u200B"},
        {"\xFF a \xFF", "\xFF a \xFF"},
        {" \u2003 ", ""},
        {"", ""},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(trimmed(text), expected);
}

TEST(Text, KeepsDifferentInvalidNamesDifferent) {
    const std::pair<std::string, std::string> cases[] = {
        {"é.txt", "é.txt"},
        {"\xE9.txt", "\uFFFD"
                     "E9.txt"},
        {"\xC0\xAF", "\uFFFD"
                     "C0\uFFFD"
                     "AF"},
        {"a\xE2\x82", "a\uFFFD"
                      "E2\uFFFD"
                      "82"},
        {std::string("\0", 1), std::string("\0", 1)},
    };
    std::set<std::string> texts;
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(textFromBytes(bytes), text);
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), std::size(cases));
}

TEST(Text, ReplacesCharactersThatAreNotPrintable) {
    EXPECT_EQ(oneLine("a\nb\r\x1B[31m\x7F\u0085\u2028\u2029é\xFF"),
              "a\uFFFDb\uFFFD\uFFFD[31m\uFFFD\uFFFD\uFFFD\uFFFDé\uFFFD");
    EXPECT_EQ(oneLine("\u202Egnp.exe\u202A\u202F\u2065\u2066\u2069\u206A\u200F"),
              "\uFFFDgnp.exe\uFFFD\u202F\u2065\uFFFD\uFFFD\u206A\u200F");
    EXPECT_EQ(printable("\ta\r\nb\x1B\u0085", "\t\n"), "\ta\uFFFD\nb\uFFFD\uFFFD");
    EXPECT_EQ(asSentence("Done"), "Done.");
    EXPECT_EQ(asSentence("Done."), "Done.");
}

TEST(Uuid, ParsesOnlyTheCanonicalFormAndMakesVersion4) {
    const std::string canonical = "5B1B7C0E-6B0C-4B58-9A58-0E6C0E1F7A01";
    EXPECT_EQ(Uuid::parse(canonical)->text(), canonical);
    EXPECT_EQ(Uuid::parse("5b1b7c0e-6b0c-4b58-9a58-0e6c0e1f7a01")->text(), canonical);
    for (std::string wrong :
         {"", "5B1B7C0E6B0C4B589A580E6C0E1F7A01", "{5B1B7C0E-6B0C-4B58-9A58-0E6C0E1F7A0}",
          "5B1B7C0E-6B0C-4B58-9A58-0E6C0E1F7A0G", "5B1B7C0E-6B0C-4B58-9A580-E6C0E1F7A01"})
        EXPECT_FALSE(Uuid::parse(wrong)) << wrong;
    std::set<Uuid> made;
    for (int i = 0; i < 100; ++i)
        made.insert(Uuid::random());
    EXPECT_EQ(made.size(), 100U);
    for (const Uuid& uuid : made)
        ASSERT_TRUE(uuid.text()[14] == '4' && std::string("89AB").contains(uuid.text()[19]));
}

TEST(Base64, ReadsTheCanonicalFormOnly) {
    const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                         {"f", "Zg=="},
                                                         {"fo", "Zm8="},
                                                         {"foo", "Zm9v"},
                                                         {std::string("\0\xFF", 2), "AP8="}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(base64Encoded(bytes), text);
        EXPECT_EQ(base64Decoded(text), bytes);
    }
    for (const char* wrong : {"Zg", "Zg=", "Zh==", "Zm9v\n", "Zm9v    ", "    ", "====", "=",
                              "  ==", "Z===", "Zg==Zg==", "Zm_v", "----"})
        EXPECT_FALSE(base64Decoded(wrong)) << wrong;
}

RC_GTEST_PROP(Base64, ReadsBackWhatItWrote, (const std::string& bytes)) {
    RC_ASSERT(base64Decoded(base64Encoded(bytes)) == bytes);
}

TEST(Digest, IsSha256) {
    const std::string abc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
    EXPECT_EQ(Sha256::hex("abc"), abc);
    Sha256 pieces;
    for (const char* piece : {"a", "", "bc"})
        pieces.update(piece);
    EXPECT_EQ(pieces.finish(), abc);
}

TEST(PhraseSearch, FindsAPhraseInAnyCaseAndForm) {
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"", "", true},
        {"", "anything", true},
        {"Grew IN", "Movies grew in Size", true},
        {"in  size", "Movies grew in Size", false},
        {" grew", "grew", false},
        {"STRASSE", "Hauptstraße", true},
        {"caf\u00C9", "cafe\u0301", true},
        {"cafe", "caf\u00E9", false},
        {"k", "\u212A", true},
        {"3.4 → 3.5", "LANTERN 3.4 → 3.5", true},
        {"σοφός", "ΣΟΦΌΣ", true},
        {"a",
         "\xFF"
         "A",
         true},
    };
    for (const auto& [phrase, text, found] : cases)
        EXPECT_EQ(PhraseSearch(phrase).isIn(text), found) << phrase << " in " << text;
}

TEST(PhraseSearch, FoldsTextsWithoutEmojiByTheSameRules) {
    // With the emoji, the text is folded by the full Unicode rules.
    const auto encoded = [](std::uint32_t c) {
        return c < 0x80 ? std::string{static_cast<char>(c)}
                        : std::string{static_cast<char>(0xC0 | c >> 6),
                                      static_cast<char>(0x80 | (c & 0x3F))};
    };
    for (const char* phrase : {"ss", "k", "s", "å", "i", "ω", "σ", "ж", "\u0307", "ʼn", "ä b"}) {
        PhraseSearch search(phrase);
        for (std::uint32_t c = 0; c < 0x600; ++c) {
            const std::string text = "SIXTEEN LETTERS: " + encoded(c) + " B";
            EXPECT_EQ(search.isIn(text), search.isIn(text + "😀")) << phrase << " in " << text;
        }
    }
    for (std::uint32_t c = 0; c < 0x600; ++c)
        EXPECT_TRUE(PhraseSearch(encoded(c)).isIn("😀" + encoded(c))) << c;
}

TEST(Characters, AreGraphemeClusters) {
    const std::tuple<std::string, std::size_t, std::string> cases[] = {
        {"", 3, ""},
        {"abc", 3, "abc"},
        {"abcd", 3, "abc"},
        {"abc", 0, ""},
        {"cafe\u0301s", 4, "cafe\u0301"},
        {"👩‍👩‍👧🇩🇪x", 2, "👩‍👩‍👧🇩🇪"},
        {std::string(100, 'n'), 80, std::string(80, 'n')},
        {"a\xFF\xFE", 2, "a\xFF"},
    };
    for (const auto& [text, count, first] : cases)
        EXPECT_EQ(firstCharacters(text, count), first) << text;
}

TEST(Collation, SortsNumbersInNamesByValue) {
    const Collation collation;
    EXPECT_LT(collation.compare("File 2", "File 10"), 0);
    EXPECT_EQ(collation.compare("same", "same"), 0);
}
