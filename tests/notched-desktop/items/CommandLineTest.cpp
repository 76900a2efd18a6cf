#include "ItemsStage.h"
#include "Kinds.h"

#include <algorithm>

namespace orrivane::e2e {
namespace {

using CommandLine = ItemsStage;

constexpr ExitStatus misused{2, std::nullopt};

TEST_F(CommandLine, listsEveryKindWithAWidthOf18To60Points) {
    const auto kinds = listedKinds();
    EXPECT_EQ(kinds.size(), expectedKinds().size() + 1);
    for (const auto& kind : kinds) {
        EXPECT_GE(kind.width, 18) << kind.id;
        EXPECT_LE(kind.width, 60) << kind.id;
        EXPECT_EQ(kind.icons, kind.id == "twins" ? 2 : 1) << kind.id;
    }
    for (const auto& expected : expectedKinds()) {
        const auto found = std::ranges::find(kinds, expected.id, &ListedKind::id);
        ASSERT_NE(found, kinds.end()) << expected.id;
        EXPECT_EQ(found->name, expected.className);
    }
}

TEST_F(CommandLine, anUnknownKindIsNamedAndRefused) {
    auto& program = startItem("teapot");
    EXPECT_EQ(program.wait(defaultBound), misused);
    EXPECT_EQ(program.log(), "orrivane-status-item: no such kind: teapot\n");
}

TEST_F(CommandLine, aScaleThatIsNoneIsRefused) {
    for (const char* scale : {"0", "-1", "2x", "", "1000", "nan"}) {
        auto& program = startItem("wifi", {"--scale", scale});
        EXPECT_EQ(program.wait(defaultBound), misused) << scale;
        EXPECT_EQ(program.log(), "orrivane-status-item: --scale needs a number from 0.5 to 4\n");
    }
}

TEST_F(CommandLine, nothingToShowIsAnsweredWithTheUsage) {
    for (const char* program : {ORRIVANE_STATUS_ITEM, ORRIVANE_WINDOW}) {
        auto& process = start({program});
        EXPECT_EQ(process.wait(defaultBound), misused);
        EXPECT_TRUE(process.log().starts_with("Usage: ")) << process.log();
    }
}

} // namespace
} // namespace orrivane::e2e
