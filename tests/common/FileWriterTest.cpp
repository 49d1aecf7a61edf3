#include <filesystem>
#include <gtest/gtest.h>

#include "common/FileWriter.h"
#include "common/Files.h"
#include "support/Failures.h"
#include "support/TempFolder.h"

namespace kelvane {
namespace {

using test::NumberOf;
using test::TempFolder;

TEST(FileWriter, WritesThePiecesInTheirOrder) {
  const TempFolder folder;
  FileWriter file(folder / "f");
  file.Write(Bytes{1, 2});
  file.Write({});
  file.Write(Bytes{3});
  file.Close();
  EXPECT_EQ(ReadWholeFile(folder / "f"), (Bytes{1, 2, 3}));
}

TEST(FileWriter, OpeningEmptiesTheFileThatIsThere) {
  const TempFolder folder;
  folder.Write("f", Bytes(10));
  FileWriter file(folder / "f");
  EXPECT_EQ(FileLength(folder / "f"), 0);
}

TEST(FileWriter, WhatIsWrittenIsInTheFileAtOnce) {
  const TempFolder folder;
  FileWriter file(folder / "f");
  file.Write(Bytes{7});
  EXPECT_EQ(ReadWholeFile(folder / "f"), Bytes{7});
}

TEST(FileWriter, OpeningAnotherFileClosesTheFirst) {
  const TempFolder folder;
  FileWriter file(folder / "a");
  file.Write(Bytes{1});
  file.Open(folder / "b");
  file.Write(Bytes{2});
  file.Close();
  EXPECT_EQ(ReadWholeFile(folder / "a"), Bytes{1});
  EXPECT_EQ(ReadWholeFile(folder / "b"), Bytes{2});
}

TEST(FileWriter, OpeningANewFileTakesNoneThatIsThere) {
  const TempFolder folder;
  folder.Write("f", Bytes(10));
  std::filesystem::create_symlink("nowhere", folder / "link");
  FileWriter file;
  for (const char* name : {"f", "link", "none/f", "."}) {
    EXPECT_FALSE(file.OpenNew(folder / name)) << name;
    EXPECT_FALSE(file.IsOpen()) << name;
  }
  EXPECT_EQ(FileLength(folder / "f"), 10);
  EXPECT_TRUE(file.OpenNew(folder / "new"));
  EXPECT_TRUE(file.IsOpen());
  file.Write(Bytes{1});
  EXPECT_EQ(ReadWholeFile(folder / "new"), Bytes{1});
}

TEST(FileWriter, ReplacingMakesTheFileAnew) {
  const TempFolder folder;
  folder.Write("f", Bytes(10));
  folder.Write("precious", Bytes(20));
  std::filesystem::create_symlink("precious", folder / "link");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  for (const char* name : {"f", "link", "dangling", "new"}) {
    FileWriter file;
    file.Replace(folder / name);
    file.Write(Bytes{1});
    file.Close();
    EXPECT_EQ(ReadWholeFile(folder / name), Bytes{1}) << name;
    EXPECT_FALSE(std::filesystem::is_symlink(folder / name)) << name;
  }
  EXPECT_EQ(FileLength(folder / "precious"), 20);
  EXPECT_FALSE(FileExists(folder / "nowhere"));
}

TEST(FileWriter, FailuresHaveTheirNumbers) {
  const TempFolder folder;
  FileWriter file;
  EXPECT_EQ(NumberOf([&] { file.Write(Bytes{1}); }), 52);
  EXPECT_EQ(NumberOf([&] { file.Close(); }), 0);
  EXPECT_EQ(NumberOf([&] { file.Open(folder / "none/f"); }), 76);
  EXPECT_EQ(NumberOf([&] { file.Open(folder.Path()); }), 75);
  EXPECT_EQ(NumberOf([&] { file.Replace(folder / "none/f"); }), 76);
  EXPECT_EQ(NumberOf([&] { file.Replace(folder.Path()); }), 75);
  ASSERT_TRUE(std::filesystem::exists("/dev/full")) << "this test needs /dev/full";
  file.Open("/dev/full");
  EXPECT_EQ(NumberOf([&] { file.Write(Bytes{1}); }), 61);
}

}  // namespace
}  // namespace kelvane
