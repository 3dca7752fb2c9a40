#include "command_line.h"

#include <gtest/gtest.h>
#include <vector>

namespace cartonpick::orders {

namespace {

struct Outcome {
  std::variant<Options, ExitCode> parsed;
  std::string output;
  std::string error;
};

Outcome parse(const std::vector<const char *> &arguments) {
  std::vector<const char *> words = {"cartonpick-orders"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const auto parsed = parseCommandLine(static_cast<int>(words.size()), words.data());
  return {parsed, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

int exitCode(const Outcome &outcome) {
  return std::get<ExitCode>(outcome.parsed).value;
}

}  // namespace

TEST(CommandLine, MayBeEmpty) {
  const auto options = std::get<Options>(parse({}).parsed);
  EXPECT_EQ(options.port, 8080);
  EXPECT_EQ(options.bindAddress, "127.0.0.1");
  EXPECT_FALSE(options.deliveriesFile);
  EXPECT_FALSE(options.storeFile);
  EXPECT_FALSE(options.exitWithParent);
}

TEST(CommandLine, SetsEveryOption) {
  const auto options = std::get<Options>(parse({"--port", "0", "--bind", "0.0.0.0", "--deliveries",
                                                "d.csv", "--store", "s.db", "--exit-with-parent"})
                                             .parsed);
  EXPECT_EQ(options.port, 0);
  EXPECT_EQ(options.bindAddress, "0.0.0.0");
  EXPECT_EQ(options.deliveriesFile, "d.csv");
  EXPECT_EQ(options.storeFile, "s.db");
  EXPECT_TRUE(options.exitWithParent);
}

TEST(CommandLine, PrintsTheVersion) {
  const Outcome outcome = parse({"--version"});
  EXPECT_EQ(exitCode(outcome), 0);
  EXPECT_EQ(outcome.output, "cartonpick-orders " CARTONPICK_VERSION "\n");
}

TEST(CommandLine, PrintsItsOptions) {
  const Outcome outcome = parse({"--help"});
  EXPECT_EQ(exitCode(outcome), 0);
  EXPECT_NE(outcome.output.find("--exit-with-parent"), std::string::npos);
}

TEST(CommandLine, IsRefusedWhenWrong) {
  const std::vector<std::vector<const char *>> wrong = {{"--port", "65536"}, {"--port", "-1"},
                                                        {"--port", "x"},     {"--port"},
                                                        {"--nonsense"},      {"extra"}};
  for (const auto &arguments : wrong) {
    const Outcome outcome = parse(arguments);
    EXPECT_EQ(exitCode(outcome), 2);
    EXPECT_NE(outcome.error, "");
    EXPECT_EQ(outcome.output, "");
  }
}

}  // namespace cartonpick::orders
