#pragma once
// What every host's FileManager must do.

#include <array>

#include "tests/conformance/HostStage.h"

namespace quorvane::conformance {

class FilesConformance : public HostConformance {
 protected:
  bool write(std::string_view content) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    const std::array<std::span<const std::uint8_t>, 2> parts{bytes.first(bytes.size() / 2),
                                                             bytes.subspan(bytes.size() / 2)};
    return files_.writeToFile(file_, parts);
  }
  /// "none" for null.
  static std::string textOf(const std::unique_ptr<FileData>& data) {
    if (data == nullptr) return "none";
    return {data->bytes().begin(), data->bytes().end()};
  }

  FileManager& files_ = platform_.fileManager;
  const std::string file_ = stage_->folder() + "/new folder/file";
};

TEST_P(FilesConformance, AFileIsReplacedAsAWholeAndEachChangeShows) {
  EXPECT_FALSE(files_.attributesOfItemAtPath(file_).has_value());
  EXPECT_EQ(textOf(files_.dataWithContentsOfFile(file_)), "none");
  EXPECT_EQ(textOf(files_.dataWithContentsOfMappedFile(file_)), "none");
  EXPECT_FALSE(files_.stringWithContentsOfFile(file_).has_value());
  const std::string first(10'000, 'x');
  ASSERT_TRUE(write(first));
  const auto attributes = files_.attributesOfItemAtPath(file_);
  ASSERT_TRUE(attributes.has_value());
  EXPECT_EQ(attributes->size, 10'000U);
  EXPECT_EQ(files_.attributesOfItemAtPath(file_), attributes);
  const auto read = files_.dataWithContentsOfFile(file_);
  const auto mapped = files_.dataWithContentsOfMappedFile(file_);
  ASSERT_TRUE(write("d\xC3\xA9j\xC3\xA0"));
  EXPECT_EQ(files_.stringWithContentsOfFile(file_), u"d\u00E9j\u00E0");
  EXPECT_EQ(textOf(read), first);
  EXPECT_EQ(textOf(mapped), first);
  ASSERT_TRUE(write(first));
  EXPECT_NE(files_.attributesOfItemAtPath(file_), attributes);
  ASSERT_TRUE(write(""));
  EXPECT_EQ(textOf(files_.dataWithContentsOfFile(file_)), "");
  EXPECT_EQ(textOf(files_.dataWithContentsOfMappedFile(file_)), "");
  ASSERT_TRUE(write("\xC3"));
  EXPECT_FALSE(files_.stringWithContentsOfFile(file_).has_value());
}

}  // namespace quorvane::conformance
