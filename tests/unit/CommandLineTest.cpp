#include <Orrivane/CommandLine.h>

#include <gtest/gtest.h>

#include <vector>

namespace orrivane {
namespace {

Command parse(const std::vector<std::string_view>& arguments) {
    return CommandLine::parse(arguments);
}

TEST(CommandLine, withoutArgumentsItRuns) {
    EXPECT_TRUE(std::holds_alternative<RunCommand>(parse({})));
}

TEST(CommandLine, helpAndVersionPrint) {
    for (const auto* flag : {"--help", "-h"})
        EXPECT_NE(std::get<PrintCommand>(parse({flag})).text.find("--set-notch"),
                  std::string::npos);
    EXPECT_EQ(std::get<PrintCommand>(parse({"--version"})).text,
              "Orrivane " + std::string(CommandLine::version()) + "\n");
}

TEST(CommandLine, diagnosesForPeopleOrForMachines) {
    EXPECT_FALSE(std::get<DiagnoseCommand>(parse({"--diagnose"})).json);
    EXPECT_TRUE(std::get<DiagnoseCommand>(parse({"--diagnose", "--json"})).json);
    EXPECT_TRUE(std::get<DiagnoseCommand>(parse({"--json", "--diagnose"})).json);
}

TEST(CommandLine, picturesAreTakenOnlyIfAskedFor) {
    EXPECT_FALSE(std::get<DiagnoseCommand>(parse({"--diagnose", "--json"})).capture);
    const auto both = std::get<DiagnoseCommand>(parse({"--capture", "--diagnose", "--json"}));
    EXPECT_TRUE(both.capture);
    EXPECT_TRUE(both.json);
    EXPECT_FALSE(std::get<DiagnoseCommand>(parse({"--diagnose", "--capture"})).json);
}

TEST(CommandLine, detailsOfADiagnosisAloneMeanNothing) {
    EXPECT_EQ(std::get<UsageError>(parse({"--capture"})).message.find("--capture goes with"), 0U);
    EXPECT_TRUE(std::holds_alternative<UsageError>(parse({"--json"})));
    EXPECT_TRUE(std::holds_alternative<UsageError>(parse({"--quit", "--json"})));
}

TEST(CommandLine, quitEndsTheRunningProgram) {
    EXPECT_TRUE(std::holds_alternative<QuitCommand>(parse({"--quit"})));
}

TEST(CommandLine, twoCommandsAtOnceAreAnErrorInEitherOrder) {
    using Arguments = std::vector<std::string_view>;
    for (const auto& arguments :
         {Arguments{"--quit", "--diagnose"}, Arguments{"--diagnose", "--json", "--quit"},
          Arguments{"--set-notch", "660,0,192,37", "--quit"},
          Arguments{"--quit", "--set-notch=660,0,192,37"}}) {
        const auto parsed = parse(arguments);
        ASSERT_TRUE(std::holds_alternative<UsageError>(parsed)) << arguments.front();
        EXPECT_NE(std::get<UsageError>(parsed).message.find(" do not go together"),
                  std::string::npos);
    }
    EXPECT_EQ(std::get<UsageError>(parse({"--quit", "--set-notch=1,0,5,5"})).message,
              "--quit and --set-notch do not go together; give one at a time.");
    EXPECT_TRUE(std::holds_alternative<QuitCommand>(parse({"--quit", "--quit"})));
}

TEST(CommandLine, theNotchIsGivenBehindABlankOrAnEqualsSign) {
    const Rect expected{{660, 0}, {192.5, 37}};
    EXPECT_EQ(std::get<SetNotchCommand>(parse({"--set-notch", "660,0,192.5,37"})).cutout, expected);
    EXPECT_EQ(std::get<SetNotchCommand>(parse({"--set-notch=660,0,192.5,37"})).cutout, expected);
}

TEST(CommandLine, aNotchMayLieOnAScreenToTheLeft) {
    EXPECT_EQ(std::get<Rect>(CommandLine::parseNotch("-1512,0,192,37")).minX(), -1512);
}

TEST(CommandLine, numbersThatMakeNoSenseAreNamedInTheMessage) {
    for (const auto* text :
         {"", "1", "1,2,3", "1,2,3,4,5", "a,0,1,1", "1,0,0,37", "1,0,5,-1", "1, 0,5,5", "1,,5,5",
          "nan,0,5,5", "1e3,0,5,5", "--1,0,5,5", "1.2.3,0,5,5", "-,0,5,5", ".,0,5,5",
          "99999999999999999999,0,5,5", "1,0,5,5,"}) {
        const auto parsed = CommandLine::parseNotch(text);
        ASSERT_TRUE(std::holds_alternative<UsageError>(parsed)) << text;
        EXPECT_EQ(std::get<UsageError>(parsed).message.find("'" + std::string(text) + "'"), 0U);
    }
}

TEST(CommandLine, aMissingValueAndAnUnknownOptionAreErrors) {
    EXPECT_TRUE(std::holds_alternative<UsageError>(parse({"--set-notch"})));
    EXPECT_NE(std::get<UsageError>(parse({"--set-notches=1,0,5,5"})).message.find("--set-notches"),
              std::string::npos);
    EXPECT_TRUE(std::holds_alternative<UsageError>(parse({"menu"})));
}

} // namespace
} // namespace orrivane
