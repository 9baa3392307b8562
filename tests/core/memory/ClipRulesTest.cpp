#include "core/memory/ClipRules.h"

#include "core/memory/ClipTypes.h"
#include "core/memory/MarkedClipGuard.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

constexpr Date copiedAt{700'000'000};
const ClipApplication editor{"org.example.Editor", "Editor"};
const ClipApplication vault{"org.example.Vault", "Vault"};

std::string type(ClipPart part) {
    return std::string(clipTypes::of(part)[0]);
}

ClipContents only(ClipPart part, std::string bytes, bool isComplete = true) {
    return {{part, {type(part), std::move(bytes), isComplete}}};
}

/// Type, title and size; empty when nothing is recorded.
std::string recorded(const ClipContents& contents) {
    const auto record = clipRules::record({contents, {}}, copiedAt);
    EXPECT_EQ(clipRules::keeps(contents), record.has_value());
    if (!record)
        return {};
    return *record->contentType + "|" + record->title + "|" + std::to_string(*record->bytes);
}

} // namespace

TEST(ClipRules, ClassifiesWhatWasCopied) {
    using enum ClipPart;
    const std::string letters(120, 'x');
    const std::pair<ClipContents, std::string> cases[] = {
        {only(text, "one\ntwo"), "Text|one two|7"},
        {only(text, letters + "y"), "Text|" + letters + "|121"},
        {only(text, std::string(65'536, 'x')), "Text|" + letters + "|65536"},
        {only(text, std::string(65'537, 'x')), ""},
        {only(text, std::string(65'536, 'x'), false), ""},
        {only(text, ""), ""},
        {only(text, "HTTPS://example.org/a"), "URL|HTTPS://example.org/a|21"},
        {only(text, "ftp://example.org"), "Text|ftp://example.org|17"},
        {only(text, "#fa0"), "Color|#fa0|4"},
        {only(text, "#FFaa00"), "Color|#FFaa00|7"},
        {only(text, "#fa00"), "Text|#fa00|5"},
        {only(text, "#ggg"), "Text|#ggg|4"},
        {only(file, "# list\r\nfile:///home/me/a%20b.txt\r\nfile:///c\r\n"), "File|a b.txt|0"},
        {only(file, "copy\nfile:///home/me/%C3%A4"), "File|ä|0"},
        {only(file, "file:///home/me/all\nfile:///home/me/cut of", false), "File|all|0"},
        {only(file, "file:///home/me/cut of", false), ""},
        {only(file, "file://elsewhere.example/a"), ""},
        {only(file, "file:///bad%zz"), ""},
        {only(file, "https://example.org/a"), ""},
        {only(image, std::string(1'000'000, 'p')), "Image|Copied image|1000000"},
        {only(image, std::string(1'000'001, 'p')), ""},
    };
    for (const auto& [contents, expected] : cases)
        EXPECT_EQ(recorded(contents), expected) << contents.begin()->second.bytes.substr(0, 40);

    auto rich = only(text, "plain");
    rich[richText] = {type(richText), "{rtf}"};
    const auto record = clipRules::record({rich, {}}, copiedAt).value();
    EXPECT_EQ(recorded(rich), "Rich Text|plain|5");
    EXPECT_EQ(record.text, "plain");
    EXPECT_EQ(record.payload, Data{"{rtf}"});
    EXPECT_EQ(record.pasteboardType, type(richText));
}

TEST(ClipRules, ReadsNoMoreThanItKeeps) {
    using enum ClipPart;
    const ClipTypeNames all{type(image), type(richText), type(text), type(file)};
    const auto asked = [&](const ClipContents& contents) {
        const auto next = clipRules::nextRead(all, contents);
        return next ? next->type : "";
    };
    EXPECT_EQ(asked({}), type(file));
    EXPECT_EQ(asked(only(file, "file:///a")), "");
    auto contents = only(file, "https://example.org");
    EXPECT_EQ(asked(contents), type(text));
    contents[text] = {type(text), "words"};
    EXPECT_EQ(asked(contents), type(richText));
    contents[text] = {type(text), ""};
    EXPECT_EQ(asked(contents), type(image));
    contents[image] = {};
    EXPECT_EQ(asked(contents), "");
    EXPECT_FALSE(clipRules::nextRead({"text/html"}, {}).has_value());
}

TEST(ClipRules, NamesTheWriterAndElseTheApplicationInFront) {
    const auto source = [](const ClipOrigin& origin) {
        const auto record =
            clipRules::record({only(ClipPart::text, "a"), origin}, copiedAt).value();
        return record.appID.value_or("-") + " " + record.appName.value_or("-");
    };
    EXPECT_EQ(source({editor, vault}), "org.example.Editor Editor");
    EXPECT_EQ(source({{}, editor}), "org.example.Editor Editor");
    EXPECT_EQ(source({}), "- -");

    const auto* excluded = "org.other, org.example.Vault";
    EXPECT_FALSE(clipRules::admits({vault, editor}, excluded));
    EXPECT_FALSE(clipRules::admits({editor, vault}, excluded));
    EXPECT_TRUE(clipRules::admits({editor, editor}, excluded));
    EXPECT_TRUE(clipRules::admits({}, excluded));
}

TEST(ClipRules, RecognisesASecondCopyByItsContent) {
    const auto clip = [](ClipPart part, const std::string& bytes) {
        return clipRules::record({only(part, bytes), {}}, copiedAt).value();
    };
    const auto text = clip(ClipPart::text, "a");
    const auto file = clip(ClipPart::file, "file:///a");
    EXPECT_TRUE(clipRules::repeats(text, clip(ClipPart::text, "a")));
    EXPECT_FALSE(clipRules::repeats(text, clip(ClipPart::text, "b")));
    EXPECT_TRUE(clipRules::repeats(file, clip(ClipPart::file, "file:///a")));
    EXPECT_FALSE(clipRules::repeats(file, clip(ClipPart::file, "file:///b")));
}

TEST(ClipRules, AClipIsOfferedAsItWasRead) {
    for (const auto& contents :
         {only(ClipPart::text, "ä\n"), only(ClipPart::file, "file:///home/a%20%C3%A4%25"),
          only(ClipPart::image, "png")}) {
        const auto clip = clipRules::record({contents, {}}, copiedAt).value();
        CopiedItem again;
        ClipTypeNames types;
        for (const auto& data : clipTypes::offered(clip))
            types.push_back(data.type);
        while (const auto next = clipRules::nextRead(types, again.contents))
            again.contents[next->part] = clipTypes::offered(clip)[static_cast<std::size_t>(
                std::ranges::find(types, next->type) - types.begin())];
        EXPECT_TRUE(clipRules::repeats(clip, clipRules::record(again, copiedAt).value()))
            << clip.title;
    }
}

TEST(MarkedClipGuard, BarsItemsThatMayRepeatAMarkedOne) {
    struct Case {
        const char* meaning;
        /// When the owner of the marked item ends, in seconds; absent if it does not.
        std::optional<double> end;
        double next;
        bool mayBeKeeper;
        bool isKept;
    };
    const Case cases[] = {
        {"a keeper takes over at once", 10, 10.001, true, false},
        {"any program, shortly after the end", 10, 11.9, false, false},
        {"another program, later", 10, 12.1, false, true},
        {"a keeper, much later", 10, 1000, true, false},
        {"another program, while the owner lives", {}, 1000, false, true},
        {"a manager that copies what others offer", {}, 0.5, false, false},
    };
    for (const auto& [meaning, end, next, mayBeKeeper, isKept] : cases) {
        MarkedClipGuard guard;
        EXPECT_TRUE(guard.admits(0, true)) << "nothing was marked";
        guard.noteMarked(0);
        if (end)
            guard.noteEnd(*end);
        EXPECT_EQ(guard.admits(next, mayBeKeeper), isKept) << meaning;
        EXPECT_TRUE(guard.admits(2000, true)) << "only one item is barred: " << meaning;
    }
}
