// Resource forks and the files around them: what is kept, and what foreign bytes may claim.

#include <gtest/gtest.h>

#include "hosts/resources/AppleDouble.h"
#include "hosts/resources/ResourceFork.h"

namespace quorvane::resources {
namespace {

/// One resource 'Pmen' 8888 named "pen", byte 1, as the published description lays it out.
Bytes smallFork() {
  Bytes fork(256);
  const auto put = [&fork](std::initializer_list<int> bytes) {
    for (const int byte : bytes) fork.push_back(static_cast<std::uint8_t>(byte));
  };
  const Bytes header{0, 0, 1, 0, 0, 0, 1, 5, 0, 0, 0, 5, 0, 0, 0, 54};
  std::ranges::copy(header, fork.begin());
  fork[16] = 7;                                                // the system's
  put({0, 0, 0, 1, 1});                                        // data: length, byte
  append(fork, header);                                        // map: copy of the header
  put({1, 2, 3, 4, 5, 6, 0, 0x80, 0, 28, 0, 50});              // next map, file, attributes, lists
  put({0, 0, 'P', 'm', 'e', 'n', 0, 0, 0, 10});                // types
  put({0x22, 0xB8, 0, 0, 0x20, 0, 0, 0, 0xA, 0xB, 0xC, 0xD});  // references
  put({3, 'p', 'e', 'n'});
  return fork;
}

TEST(ResourceFork, TheLayoutIsThePublishedOne) {
  const auto fork = readResourceFork(smallFork());
  ASSERT_TRUE(fork) << fork.fault;
  ASSERT_EQ(fork.value->resources.size(), 1U);
  EXPECT_EQ(fork.value->resources[0],
            (Resource{"Pmen"_4cc, 8888, 0x20, 0x0A0B0C0D, "pen", Bytes{1}}));
  EXPECT_EQ(fork.value->attributes, 0x80);
  EXPECT_EQ(writeResourceFork(*fork.value).value, smallFork());
}

TEST(ResourceFork, EverythingIsKept) {
  ResourceFork fork;
  fork.reserved[239] = 9;
  for (const std::int16_t id : std::initializer_list<std::int16_t>{-3, 0, 32767}) {
    fork.resources.push_back({"AAAA"_4cc, id, 1, 2, std::nullopt, Bytes(70'000, 3)});
  }
  fork.resources.push_back({"\0\0\0\0"_4cc, 1, 0, 0, "", {}});
  fork.resources.push_back({"ZZZZ"_4cc, 1, 0, 0, std::string(255, 'n'), Bytes{1}});
  EXPECT_EQ(readResourceFork(writeResourceFork(fork).value.value()).value, fork);
  EXPECT_EQ(readResourceFork(writeResourceFork({}).value.value()).value, ResourceFork());
  EXPECT_EQ(readResourceFork({}).value, ResourceFork());
}

TEST(ResourceFork, WhatTheFormatCantHoldIsNotWritten) {
  ResourceFork fork;
  fork.at("DATA"_4cc, 1).data.resize(kLargest);
  EXPECT_EQ(writeResourceFork(fork).fault, "the fork is larger than 16 MiB");
  fork.at("DATA"_4cc, 1) = {"DATA"_4cc, 1, 0, 0, std::string(256, 'n'), {}};
  EXPECT_EQ(writeResourceFork(fork).fault, "a name has more than 255 bytes");
  fork.resources.assign(5461, {});
  EXPECT_EQ(writeResourceFork(fork).fault, "the resources are too many");
  fork.resources.assign(300, {0, 0, 0, 0, std::string(255, 'n'), {}});
  EXPECT_EQ(readResourceFork(writeResourceFork(fork).value.value()).value, fork) << "one name";
  for (std::size_t i = 0; i < 300; ++i) fork.resources[i].name->replace(0, 3, std::to_string(i));
  EXPECT_EQ(writeResourceFork(fork).fault, "the names are too many");
}

TEST(ResourceFork, ForeignBytesGiveAReasonAndNoMore) {
  struct Case {
    std::size_t at;
    std::uint8_t byte;
    std::string_view fault;
  };
  for (const Case& each :
       std::initializer_list<Case>{{0, 1, "the data lie outside the fork"},
                                   {4, 1, "the map lies outside the fork"},
                                   {15, 27, "the map is cut short"},
                                   {7, 4, "header, data and map overlap"},
                                   {286, 27, "the type list lies inside the map's head"},
                                   {285, 1, "the type list lies outside the map"},
                                   {287, 1, "the name list lies outside the map"},
                                   {290, 4, "the type list is cut short"},
                                   {296, 4, "a reference list lies outside the map"},
                                   {298, 4, "reference lists overlap"},
                                   {302, 1, "a name lies outside the map"},
                                   {306, 4, "a resource lies outside the data"}}) {
    Bytes bytes = smallFork();
    bytes.at(each.at) = each.byte;
    EXPECT_EQ(readResourceFork(bytes).fault, each.fault) << "byte " << each.at;
  }
  EXPECT_EQ(readResourceFork(Bytes(kLargest + 1)).fault, "the fork is larger than 16 MiB");
}

TEST(ResourceFork, ResourcesThatShareBytesAreNone) {
  ResourceFork fork;
  for (const std::int16_t id : std::initializer_list<std::int16_t>{1, 2})
    fork.at("DATA"_4cc, id).data.resize(100);
  Bytes bytes = writeResourceFork(fork).value.value();
  bytes.at(bytes.size() - 5) = 0;  // the second lies where the first one does
  EXPECT_EQ(readResourceFork(bytes).fault, "resources overlap");
}

TEST(AppleDouble, EntriesStayWhereTheyWereAndTheForkGoesLast) {
  AppleDouble file;
  file.filler[3] = 5;
  file.setFinderInfo({"PREF"_4cc, "QVKT"_4cc});
  file.contentOf(kFinderInfoEntry).resize(100, 7);  // attributes that count on their offset
  file.contentOf(kResourceForkEntry) = smallFork();
  file.contentOf(0x80000001) = {1, 2, 3};
  const Bytes bytes = writeAppleDouble(file).value.value();
  auto again = readAppleDouble(bytes);
  ASSERT_TRUE(again) << again.fault;
  EXPECT_EQ(again.value->finderInfo(), (FinderInfo{"PREF"_4cc, "QVKT"_4cc}));
  EXPECT_EQ(again.value->filler, file.filler);
  const auto offsetOf = [](const AppleDouble& of, std::uint32_t id) {
    return std::ranges::find(of.entries, id, &AppleDouble::Entry::id)->offset;
  };
  again.value->contentOf(kResourceForkEntry).resize(5000, 4);
  const auto grown = readAppleDouble(writeAppleDouble(*again.value).value.value());
  for (const std::uint32_t id : {kFinderInfoEntry, kResourceForkEntry, 0x80000001U}) {
    EXPECT_EQ(offsetOf(*grown.value, id), offsetOf(*again.value, id));
    EXPECT_TRUE(std::ranges::equal(grown.value->content(id), again.value->content(id)));
  }
  EXPECT_GT(offsetOf(*grown.value, kResourceForkEntry), offsetOf(*grown.value, 0x80000001));
  AppleDouble full;
  full.contentOf(kFinderInfoEntry).resize(100, 7);
  again = readAppleDouble(writeAppleDouble(full).value.value());
  again.value->contentOf(kResourceForkEntry) = smallFork();
  EXPECT_EQ(writeAppleDouble(*again.value).fault, "the file's attributes leave no room");
}

TEST(AppleDouble, ForeignBytesGiveAReason) {
  AppleDouble file;
  file.setFinderInfo({1, 2});
  file.contentOf(kResourceForkEntry) = {1, 2, 3};
  const Bytes whole = writeAppleDouble(file).value.value();
  const auto faultOf = [&whole](std::size_t at, std::uint8_t byte) {
    Bytes bytes = whole;
    bytes.at(at) = byte;
    return readAppleDouble(bytes).fault;
  };
  EXPECT_EQ(faultOf(0, 1), "it is no AppleDouble file");
  EXPECT_EQ(faultOf(5, 1), "it isn't of version 2");
  EXPECT_EQ(faultOf(24, 1), "the table is cut short");
  EXPECT_EQ(faultOf(33, 49), "entries overlap");
  EXPECT_EQ(faultOf(44, 1), "an entry lies outside the file");
  for (std::size_t size = 1; size < whole.size(); ++size) {
    EXPECT_FALSE(readAppleDouble(ByteView(whole).first(size))) << size;
  }
}

}  // namespace
}  // namespace quorvane::resources
