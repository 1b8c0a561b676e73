// Alias paths: a file's path under the alias that begins it resolves back to
// the same file, relative names included.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/editor/PathAliasTable.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::Status;

TEST(PathAliasTableTest, NamesFilesUnderTheLongestAliasAndResolvesThemBack) {
  PathAliasTable aliases;
  ASSERT_EQ(aliases.addAlias(L"ROOT", L""), Status::Ok);
  ASSERT_EQ(aliases.addAlias(L"DATA", L"/srv/data"), Status::Ok);
  EXPECT_EQ(aliases.addAlias(L"", L"/x"), Status::Failed);
  EXPECT_EQ(aliases.addAlias(L"C:", L"/x"), Status::Failed);

  const std::wstring cwd = platform::fromUtf8(std::filesystem::current_path().string());
  struct Case {
    std::wstring file;
    std::wstring aliasPath;
  };
  const Case cases[] = {
      {L"/srv/data/a.dxf", L"DATA:/a.dxf"},
      {L"/srv/other/b.dxf", L"ROOT:/srv/other/b.dxf"},
      {L"rel/c.dxf", L"ROOT:" + cwd + L"/rel/c.dxf"},
  };
  for (const Case& c : cases) {
    const std::optional<std::wstring> aliasPath = aliases.aliasPathOf(c.file);
    ASSERT_TRUE(aliasPath) << platform::toUtf8(c.file);
    EXPECT_EQ(*aliasPath, c.aliasPath);
    const std::filesystem::path back = *aliases.resolve(*aliasPath);
    EXPECT_EQ(back, std::filesystem::absolute(platform::toUtf8(c.file)));
  }

  EXPECT_FALSE(aliases.resolve(L"NONE:/a.dxf"));
  EXPECT_FALSE(aliases.resolve(L"no colon"));
  ASSERT_EQ(aliases.deleteAlias(L"ROOT"), Status::Ok);
  EXPECT_EQ(aliases.deleteAlias(L"ROOT"), Status::Failed);
  EXPECT_FALSE(aliases.aliasPathOf(L"/srv/other/b.dxf"));
}

}  // namespace
}  // namespace host
