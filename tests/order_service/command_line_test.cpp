#include "command_line.h"

#include <gtest/gtest.h>
#include <vector>

namespace cartonpick::orders {

namespace {

struct Outcome {
  Command parsed;
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
  const auto options = std::get<ServeOptions>(parse({}).parsed);
  EXPECT_EQ(options.port, 8080);
  EXPECT_EQ(options.bindAddress, "127.0.0.1");
  EXPECT_FALSE(options.deliveriesFile);
  EXPECT_FALSE(options.store);
  EXPECT_FALSE(options.exitWithParent);
}

TEST(CommandLine, SetsEveryOption) {
  const auto options = std::get<ServeOptions>(
      parse({"--port", "0", "--bind", "0.0.0.0", "--deliveries", "d.csv", "--store", "s.db",
             "--store-timeout", "3", "--exit-with-parent"})
          .parsed);
  EXPECT_EQ(options.port, 0);
  EXPECT_EQ(options.bindAddress, "0.0.0.0");
  EXPECT_EQ(options.deliveriesFile, "d.csv");
  EXPECT_EQ(options.store, "s.db");
  EXPECT_EQ(options.storeTimeout, std::chrono::seconds(3));
  EXPECT_TRUE(options.exitWithParent);
}

TEST(CommandLine, MayAskForTheDemoDeliveries) {
  EXPECT_TRUE(std::get<ServeOptions>(parse({"--demo", "--store", "s.db"}).parsed).demo);
  EXPECT_EQ(exitCode(parse({"--demo", "--deliveries", "d.csv"})), 2);
}

TEST(CommandLine, MayLoadAFile) {
  const auto options = std::get<LoadOptions>(parse({"load", "d.csv", "--store", "s.db"}).parsed);
  EXPECT_EQ(options.file, "d.csv");
  EXPECT_EQ(options.store, "s.db");
}

TEST(CommandLine, MayExportADeliveryOrADay) {
  const auto all = std::get<ExportOptions>(parse({"export", "--store", "s.db"}).parsed);
  EXPECT_EQ(all.store, "s.db");
  EXPECT_EQ(all.format, ExportFormat::Csv);
  EXPECT_FALSE(all.filter.delivery || all.filter.day);
  const auto some =
      std::get<ExportOptions>(parse({"export", "--store", "s.db", "--delivery", "4711", "--day",
                                     "2026-02-28", "--format", "json"})
                                  .parsed);
  EXPECT_EQ(some.filter.delivery, "4711");
  EXPECT_EQ(some.filter.day, "2026-02-28");
  EXPECT_EQ(some.format, ExportFormat::Json);
}

TEST(CommandLine, MayReopenADelivery) {
  const auto options = std::get<ReopenOptions>(parse({"reopen", "4711", "--store", "s.db"}).parsed);
  EXPECT_EQ(options.delivery, "4711");
  EXPECT_EQ(options.store, "s.db");
}

TEST(CommandLine, WaitsAMinuteForTheStoreByDefault) {
  const auto wait = [](const std::vector<const char *> &arguments) {
    return std::get<ServeOptions>(parse(arguments).parsed).storeWait;
  };
  EXPECT_EQ(wait({}), std::chrono::seconds(60));
  EXPECT_EQ(wait({"--wait-for-store", "0"}), std::chrono::seconds(0));
}

TEST(CommandLine, GivesAnAnswerMoreTimeThanACallOfTheStore) {
  const auto handlerLimit = [](const std::vector<const char *> &arguments) {
    return std::get<ServeOptions>(parse(arguments).parsed).limits.handler;
  };
  EXPECT_EQ(handlerLimit({}), std::chrono::seconds(30));
  EXPECT_EQ(handlerLimit({"--store-timeout", "20"}), std::chrono::seconds(30));
  EXPECT_EQ(handlerLimit({"--store-timeout", "21"}), std::chrono::seconds(31));
  EXPECT_EQ(handlerLimit({"--store-timeout", "3600"}), std::chrono::seconds(3610));
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

TEST(CommandLine, QuotesNoUrlInAnError) {
  const char *const url = "postgresql://me:secret@db/picking";
  const std::vector<std::vector<const char *>> wrong = {
      {url},
      {"export", url},
      {"--port", url},
      {"--stor=postgresql://me:secret@db/picking"},
      {"load", "d.csv", url},
      {"export", "--store", "s", "--format", url},
      {"host=db password=secret"},
  };
  for (const auto &arguments : wrong) {
    const Outcome outcome = parse(arguments);
    EXPECT_EQ(exitCode(outcome), 2);
    EXPECT_EQ(outcome.error.find("secret"), std::string::npos) << outcome.error;
  }
}

TEST(CommandLine, IsRefusedWhenWrong) {
  const std::vector<std::vector<const char *>> wrong = {
      {"--port", "65536"},
      {"--port", "-1"},
      {"--port", "x"},
      {"--port"},
      {"--store-timeout", "0"},
      {"--wait-for-store", "-1"},
      {"reopen", "4711"},
      {"reopen", "--store", "s"},
      {"--nonsense"},
      {"extra"},
      {"load", "d.csv"},
      {"load", "--store", "s"},
      {"export"},
      {"export", "--store", "s", "--day", "today"},
      {"export", "--store", "s", "--delivery", "\xFF"},
      {"export", "--store", "s", "--format", "x"}};
  for (const auto &arguments : wrong) {
    const Outcome outcome = parse(arguments);
    EXPECT_EQ(exitCode(outcome), 2);
    EXPECT_NE(outcome.error, "");
    EXPECT_EQ(outcome.output, "");
  }
}

}  // namespace cartonpick::orders
