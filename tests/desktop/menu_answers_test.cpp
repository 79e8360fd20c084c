// What the stand-in does for the Input Menu, between processes.

#include <gtest/gtest.h>

#include <array>

#include "hosts/desktop/ClipboardFile.h"
#include "src/base/BigEndian.h"
#include "src/base/Text.h"
#include "tests/support/DesktopStage.h"
#include "tools/checker/Dates.h"
#include "tools/checker/InputMethods.h"
#include "tools/checker/WritingStyles.h"

namespace quorvane::tests {
namespace {

class MenuAnswers : public testing::Test {
 protected:
  RunningProgram run(std::vector<std::string> arguments, std::string input = {}) {
    return {folder, {std::move(arguments), std::move(input), variables}};
  }
  /// As if the item had been chosen.
  void choose(const RunningProgram& inputMethod, std::uint32_t command) {
    MessagePorts& ports = stage.platform().messagePorts;
    const auto port = ports.CFMessagePortCreateRemote(
        checker::inputMethodPortName(desktop::serialNumberOf(inputMethod.pid())));
    ASSERT_NE(port, nullptr);
    std::array<std::uint8_t, sizeof command> payload{};
    putBigEndian(payload, 0, command);
    EXPECT_EQ(ports.CFMessagePortSendRequest(*port, 230, payload, Seconds(1), Seconds(0), nullptr),
              kCFMessagePortSuccess);
  }
  std::string today() {
    IcuDateFormatting dates;
    dates.locale = "en_US_POSIX";
    dates.systemTimeZone = "UTC";
    return toUtf8(
        checker::dateText(17141, dates, stage.platform().clock.CFAbsoluteTimeGetCurrent()));
  }

  OwnFolder folder;
  DesktopStage stage;
  std::filesystem::path runtime = stage.configuration().runtimeDirectory;
  std::filesystem::path support = folder.path() / "support";
  std::vector<std::string> variables{
      "QUORVANE_RUNTIME_DIR=" + runtime.string(), "QUORVANE_DATA_DIR=" + support.string(),
      "QUORVANE_KEY_OFFSET=" + std::to_string(stage.configuration().keyOffset), "TZ=UTC"};
};

TEST_F(MenuAnswers, AbbreviationsDatesAndStylesGoTheWholeWay) {
  RunningProgram standIn = run({"checker"});
  ASSERT_TRUE(eventually([&] { return announcementsIn(runtime) == 1; })) << standIn.errors();
  EXPECT_TRUE(std::filesystem::exists(support / "Quorvane" / "._Quorvane Parameters"));
  const std::string before = today();
  RunningProgram type =
      run({"type", "--no-checker", "--delay", "100"}, "a b c d e f g h i j btw (Afaik) teh x ");
  ASSERT_TRUE(eventually([&] { return announcementsIn(runtime) == 2; })) << type.errors();
  choose(type, "DaTl"_4cc);
  choose(type, 3001);
  choose(type, 1003);
  EXPECT_EQ(type.wait(), 0) << type.errors();
  std::string typed = type.output();
  const std::string& date = typed.find(before) == typed.npos ? today() : before;  // midnight
  ASSERT_NE(typed.find(date), typed.npos) << typed;
  typed.erase(typed.find(date), date.size());
  EXPECT_EQ(typed, "a b c d e f g h i j by the way (As far as I know) the x ");
  EXPECT_EQ(checker::readWritingStyle(folder.path() / "config" / "quorvane", stage.host().log()),
            2U);

  desktop::ClipboardFile clipboard(runtime, stage.host().log());
  clipboard.copy("older");
  clipboard.copyForCommand("stra\u00DFe");
  RunningProgram last = run({"type", "--no-checker", "--delay", "200"}, "so i think i know ");
  ASSERT_TRUE(eventually([&] { return announcementsIn(runtime) == 2; })) << last.errors();
  choose(last, "PrAC"_4cc);
  ASSERT_TRUE(eventually([&] {
    clipboard.endLoan();  // before the client has pasted
    return clipboard.text() == "older";
  })) << standIn.errors();
  EXPECT_EQ(last.wait(), 0);
  typed = last.output();
  ASSERT_NE(typed.find("STRASSE"), typed.npos) << typed;
  typed.erase(typed.find("STRASSE"), 7);
  EXPECT_EQ(typed, "so i think i know ") << "a variable, to the technical style";

  RunningProgram chooser = run({"type", "--no-checker", "--delay", "60000"}, "x");
  ASSERT_TRUE(eventually([&] { return announcementsIn(runtime) == 2; })) << chooser.errors();
  choose(chooser, "QtOp"_4cc);
  EXPECT_EQ(standIn.wait(), 0) << standIn.errors();
}

}  // namespace
}  // namespace quorvane::tests
