#include "TemporarySite.h"
#include "platform/Files.h"
#include "platform/SiteRoot.h"

namespace tessaly {
namespace {

using SiteRootTest = TemporarySite;

TEST_F(SiteRootTest, PathsOfTheSiteBecomePathsOfTheHost) {
  put("c/Programme/RV48/one.mac", "");
  put("c/Programme/RV48/Two.mac", "");
  put("c/Programme/RV48/two.MAC", "");
  put("c/Küche/Новости/Äß.mac", "");
  put("x", "");
  const struct {
    const char* site;
    std::string host;
  } cases[] = {{"c:\\Programme\\RV48\\one.mac", "c/Programme/RV48/one.mac"},
               {"C:\\programme\\rv48\\ONE.MAC", "c/Programme/RV48/one.mac"},
               {"c:\\\\Programme\\/RV48\\.\\one.mac", "c/Programme/RV48/one.mac"},
               {"c:\\programme\\RV48\\", "c/Programme/RV48"},
               {"c:\\programme\\RV48\\two.mac", "c/Programme/RV48/Two.mac"},  // the first in sorted order
               {"c:\\programme\\RV48\\two.MAC", "c/Programme/RV48/two.MAC"},  // the exact name wins
               {"c:\\programme\\New\\one.mac", "c/Programme/New/one.mac"},
               {"d:\\Programme\\one.mac", "d/Programme/one.mac"},
               {"c:\\KÜCHE\\НОВОСТИ\\äß.MAC", "c/Küche/Новости/Äß.mac"},
               {"c:\\k\xFC"
                "che\\новости",
                "c/Küche/Новости"},  // as a list in the older encoding names it
               {"c:\\Kuche", "c/Kuche"},
               {"c:\\ÜB", "c/ÜB"},
               {"Z:a", "z/a"},
               {"A:\\a", "a/a"},
               {"a:", "a"},
               {"z:", "z"},
               {"[:\\a", "[:/a"},
               {"@:\\a", "@:/a"},
               {"`:\\a", "`:/a"},
               {"{:\\a", "{:/a"},
               {"C:", "c"},
               {"X", "x"},
               {"\\X\\y", "x/y"}};
  for (const auto& c : cases) EXPECT_EQ(root_.resolve(c.site), host(c.host)) << c.site;

  EXPECT_EQ(root_.sitePathOf(host("a/X/y.mac")), "a:\\X\\y.mac");
  EXPECT_EQ(root_.sitePathOf(host("z/y")), "z:\\y");
  for (const char* other : {"ab/y", "C/y", "{/y", "`/y", "c"})
    EXPECT_EQ(root_.sitePathOf(host(other)), host(other)) << "no drive";
  const std::string native = host("c").string();
  EXPECT_EQ(root_.resolve(native + "\\PROGRAMME\\\\rv48"), native + "/Programme/RV48");
  const std::string named = native + "/Programme/RV48/ONE.mac";
  EXPECT_EQ(root_.resolve(named), named) << "a person has named another file than one.mac";
}

TEST_F(SiteRootTest, NothingLeadsOut) {
  using std::string_view_literals::operator""sv;
  for (const std::string_view path :
       {""sv, ".."sv, "c:\\a\\..\\b"sv, "c:/../x"sv, "c:.."sv, "/srv/.."sv, "c:\\a\0b"sv}) {
    EXPECT_TRUE(root_.resolve(path).empty()) << path;
    EXPECT_FALSE(root_.same(path, path)) << path;
  }
  for (const std::string_view name : {""sv, "."sv, ".."sv, "a/b"sv, "a\\b"sv, "c:"sv, "a\0"sv}) {
    EXPECT_FALSE(isPlainName(name)) << name;
  }
  // Names that other systems keep for devices are names of files here, and one too long for a file is none.
  const std::string endless(10'000, 'x');
  for (const std::string& name :
       {std::string("..Panel 1.x"), std::string("CON"), std::string("nul.mac"), endless}) {
    EXPECT_TRUE(isPlainName(name)) << name;
    EXPECT_EQ(root_.resolve("c:\\" + name), host("c") / name);
  }
  std::filesystem::create_directory(host("c"));
  EXPECT_FALSE(writeFile(root_, "c:\\" + endless, "x"));
  EXPECT_FALSE(copyFile(root_, "c:\\" + endless, "c:\\" + endless));
  EXPECT_FALSE(readFile(root_, "c:\\" + endless));
  EXPECT_FALSE(makeFolder(root_, "c:\\" + endless));
  EXPECT_TRUE(writeFile(root_, "c:\\NUL", "x"));
  EXPECT_EQ(bytes("c/NUL"), "x");
}

TEST_F(SiteRootTest, SamePlace) {
  put("c/A.mac", "");
  put("c/B.mac", "");
  std::filesystem::create_directory_symlink(host("c"), host("link"));
  EXPECT_TRUE(root_.same("c:\\a.MAC", "C:/A.mac"));
  EXPECT_TRUE(root_.same("c:\\A.mac", "link\\a.mac"));
  EXPECT_FALSE(root_.same("c:\\a.mac", "c:\\b.mac"));
  std::filesystem::create_directory_symlink("/usr", host("out"));
  EXPECT_TRUE(root_.holds("link\\a.mac") && root_.holds("c:\\none"));
  EXPECT_FALSE(root_.holds("out\\bin") || root_.holds("/usr/bin"));
}

TEST_F(SiteRootTest, TheRootComesFromOptionThenEnvironment) {
  ::setenv("HOME", "/home/x", 1);
  ::setenv("XDG_DATA_HOME", "relative", 1);
  ::unsetenv("TESSALY_ROOT");
  EXPECT_EQ(SiteRoot::fromEnvironment("").path(), "/home/x/.local/share/tessaly");
  ::setenv("XDG_DATA_HOME", "/data", 1);
  EXPECT_EQ(SiteRoot::fromEnvironment("").path(), "/data/tessaly");
  ::setenv("TESSALY_ROOT", "/site", 1);
  EXPECT_EQ(SiteRoot::fromEnvironment("").path(), "/site");
  EXPECT_EQ(SiteRoot::fromEnvironment("/chosen").path(), "/chosen");
}

}  // namespace
}  // namespace tessaly
