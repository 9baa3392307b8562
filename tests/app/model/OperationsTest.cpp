#include "app/model/Operations.h"

#include "tests/app/support/Await.h"

using namespace tidemark;

/// "x": the operation of the row must not begin while that of the column is running.
TEST(Operations, ExcludeEachOtherByTheTable) {
    using enum Operation;
    struct Row {
        Operation beginning;
        std::string_view refused;
    };
    // The columns have the same order as the rows, that of the enumeration: opening, capturing,
    // capturing in setup, saving, importing, naming, drafting, saving a draft, choosing, managing
    // and checking folders, checking after a return, switching recording.
    const Row rows[] = {
        {opening, /*            */ "x------------"}, {capturing, /*          */ "xxxxxxxxxxxx-"},
        {capturingInSetup, /*   */ "xxxxxxxx--xx-"}, {saving, /*             */ "xxxxxxxxxxxxx"},
        {importing, /*          */ "xxxxxxxxxxxxx"}, {naming, /*             */ "xxxxxxxxxxxxx"},
        {drafting, /*           */ "xxxx--xx-----"}, {savingDraft, /*        */ "x--x--xx-----"},
        {choosingFolders, /*    */ "--------x----"}, {managingFolders, /*    */ "---------x---"},
        {checkingFolders, /*    */ "-xxx---x--xx-"}, {checkingAfterReturn, /**/ "xxxxxxxx--xx-"},
        {switchingRecording, /* */ "x--xxxxx----x"},
    };
    ASSERT_EQ(std::size(rows), exclusions::table.size());
    for (const auto& [beginning, refused] : rows) {
        std::string found;
        for (const auto& column : rows) {
            Observable owner;
            Operations operations(owner);
            const auto running = operations.begin(column.beginning);
            ASSERT_TRUE(running);
            found += operations.begin(beginning) ? '-' : 'x';
        }
        EXPECT_EQ(found, refused) << "row " << std::to_underlying(beginning);
    }
}

TEST(Operations, EndWithTheirTokenAlsoAfterAMove) {
    Observable owner;
    int changes = 0;
    QObject::connect(&owner, &Observable::changed, [&] { ++changes; });
    Operations operations(owner);
    std::optional<Operations::Token> kept;
    {
        auto saving = operations.begin(Operation::saving);
        auto choosing = operations.begin(Operation::choosingFolders);
        kept = std::move(saving);
        EXPECT_FALSE(operations.begin(Operation::naming));
    }
    EXPECT_TRUE(operations.isRunning(Operation::saving));
    EXPECT_FALSE(operations.isRunning(Operation::choosingFolders));
    test::settle();
    kept = operations.begin(Operation::managingFolders);
    EXPECT_FALSE(operations.isRunning(Operation::saving)) << "its token was replaced";
    kept.reset();
    EXPECT_TRUE(operations.isIdle());
    test::settle();
    EXPECT_EQ(changes, 2);
}
