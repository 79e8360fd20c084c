// The stand-in's tools and the user's files, without a second process.

#include <gtest/gtest.h>

#include <fstream>

#include "hosts/desktop/AppleDoubleFile.h"
#include "hosts/icu/IcuTextEncoding.h"
#include "tests/support/DesktopStage.h"
#include "tools/checker/MacRoman.h"
#include "tools/checker/TextTools.h"
#include "tools/checker/UserContent.h"
#include "tools/checker/WritingStyleMenu.h"

namespace quorvane::checker {
namespace {

TEST(CheckerTextTools, EachDoesItsOneThing) {
  struct Row {
    std::uint32_t command;
    std::u16string text, after;
  };
  for (const Row& row : {
           Row{17100, u"  a \t b  \r\n\u00A0c d \n\n", u"a b\r\nc d\n\n"},
           Row{17100, u"", u""},
           Row{17101, u"a\nb \r\n  c\n\n \nd\re", u"a b c\n\n\nd e"},
           Row{17101, u"\r\na\n", u"\r\na\n"},
           Row{17102, u"> > a > b\n>>c\n  >\td\n e\n>", u"a > b\nc\n\td\n e\n"},
           Row{17110, u"straße \U00010428 i", u"STRASSE \U00010400 I"},
           Row{17111, u"ΟΔΟΣ Ä", u"οδος ä"},
       }) {
    EXPECT_EQ(afterTextTool(row.command, row.text), row.after) << row.command;
  }
  EXPECT_EQ(afterTextTool(17103, u"a"), std::nullopt);
}

TEST(CheckerMenuRecord, HoldsWhatFits) {
  std::array<std::uint8_t, 16> record;
  record.fill(1);
  const std::array<std::string_view, 3> titles{"abc", "def", "ghi"};
  writeMenuRecord(record, titles, 3);
  EXPECT_EQ(record, (std::array<std::uint8_t, 16>{0, 0, 0, 2, 0, 0, 0, 0, 3, 'a', 'b', 'c', 3, 'd',
                                                  'e', 'f'}));
}

class CheckerUserFiles : public testing::Test {
 protected:
  CheckerUserFiles() { makeUserFolders(support, stage.host().log()); }

  void write(const std::string& name, const std::string& text, FourCharCode type,
             FourCharCode creator) {
    const auto file = userFolder(support, UserFileKind::AutoType) / name;
    std::ofstream(file, std::ios::binary) << text;
    desktop::updateAppleDouble(file, [&](auto& around) { around.setFinderInfo({type, creator}); });
  }
  /// What becomes of a text at its last key: `document` has the count and what is sent.
  std::string expanded(std::string_view text, std::size_t vouchedFrom = 0) {
    TextRecord record{{text.begin(), text.end()}, text.size(), 0, true};
    record.key = record.text.back();
    const auto fix = findExpansion({record, vouchedFrom}, content.abbreviations());
    return fix ? std::to_string(fix->count) + ' ' + fix->text : "-";
  }

  tests::DesktopStage stage;
  std::filesystem::path support = stage.configuration().dataDirectory;
  IcuTextEncoding encoding;
  UserContent content{support, encoding, stage.host().log()};
};

TEST_F(CheckerUserFiles, SwitchesAndChangesAreNoticed) {
  content.read();
  EXPECT_TRUE(content.words().empty());
  EXPECT_EQ(expanded("btw "), "-") << "samples are off";
  write("Zzz", "zz\tlast\n", "TEXT"_4cc, 0);
  write("Other", "oo\tother\n", "JPEG"_4cc, 0);
  content.turnOver(3);
  EXPECT_EQ(expanded("zz "), "-") << "the other one is no file of abbreviations";
  content.turnOver(2);
  EXPECT_EQ(expanded("zz "), "3 last ");
  EXPECT_EQ(expanded("oo "), "-");
  const auto zzz = userFolder(support, UserFileKind::AutoType) / "Zzz";
  std::ofstream(zzz) << "yy\tnew\n";
  std::filesystem::last_write_time(
      zzz, std::filesystem::file_time_type::clock::now() + std::chrono::seconds(1));
  content.readIfChanged();
  EXPECT_EQ(expanded("zz ") + expanded("yy "), "-3 new ");
  content.turnOver(2);
  EXPECT_EQ(expanded("yy "), "-");
  const auto words = userFiles(support, UserFileKind::Spelling, encoding);
  ASSERT_EQ(words.size(), 1U);
  switchUserFile(words.front().path, true);
  std::filesystem::resize_file(words.front().path, 0);
  std::ofstream(words.front().path)
      << "\xEF\xBB\xBFQuorvane\r\ntwo words\n" + std::string(64, 'x') << "\nisn\xE2\x80\x99t\n";
  content.readIfChanged();
  EXPECT_EQ(content.words(), (WordSet{"Quorvane", "isn't"}));
  std::filesystem::resize_file(words.front().path, kLargestUserFile + 1);
  content.read();
  EXPECT_TRUE(content.words().empty());
}

TEST_F(CheckerUserFiles, AbbreviationsExpandWholeOrNotAtAll) {
  write("A",
        "btw\tby the way\nbtw\tno\nDr.\tDoctor\nhi\tGr\xC3\xBC\xC3\x9F\x65 \xF0\x9F\x98\x80\n"
        "no tab\nbad\t\n\tbad\nill\t\xFF\ntwo words\tbad\nlong\t" +
            std::string(256, 'x') + "\nfits\t" + std::string(255, 'x') + '\n',
        "TEXT"_4cc, "QVKE"_4cc);
  content.turnOver(1);
  EXPECT_EQ(content.abbreviations().size(), 4U);
  for (const auto& [text, sent] : std::map<std::string, std::string>{
           {"btw ", "4 by the way "},
           {"a (btw)", "4 by the way)"},
           {"x Btw\r", "4 By the way\n"},
           {"BTW ", "-"},
           {"btw", "-"},
           {"x.btw ", "-"},
           {"\xC3tw btw-\xD1", "4 by the way\u2014"},
           {"\xC3"
            "btw ",
            "-"},
           {"Dr. ", "4 Doctor "},
           {"hi,", "3 Gr\u00FC\u00DFe \U0001F600,"},
           {"bad ", "-"},
           {"ill ", "-"},
       }) {
    EXPECT_EQ(expanded(text), sent) << text;
  }
  EXPECT_EQ(expanded("btw ", 1), "-") << "its beginning isn't vouched for";
  const std::string full(377, ' ');
  EXPECT_EQ(expanded(full + "btw "), "4 by the way ");
  EXPECT_EQ(sessionBytes(u"a\n\u2014\u0451\u00E9"),
            (std::vector<std::uint8_t>{'a', 13, 209, 214, 0xC3}));
}

}  // namespace
}  // namespace quorvane::checker
