#include "TemporarySite.h"
#include "platform/ChosenPath.h"
#include "platform/OpenFileWindows.h"
#include "platform/SiteRoot.h"

namespace tessaly {
namespace {

using SiteRootTest = TemporarySite;

TEST_F(SiteRootTest, PathsOfTheSiteBecomePathsOfTheHost) {
  put("c/Programme/RV48/one.mac", "");
  put("c/K\u00FCche/x.mac", "");
  put("x", "");
  const struct {
    std::string site, host;
  } cases[] = {{"c:\\programme\\rv48\\ONE.MAC", "c/Programme/RV48/one.mac"},
               {"C:\\\\Programme\\/RV48\\.\\one.mac", "c/Programme/RV48/one.mac"},
               {"c:\\programme\\New\\one.mac", "c/Programme/New/one.mac"},
               {"d:\\Programme\\one.mac", "d/Programme/one.mac"},
               {"c:\\k\xFC"
                "che\\X.mac",
                "c/K\u00FCche/x.mac"},
               {"C:", "c"},
               {"\\X\\y", "x/y"},
               {host("c/programme").string() + "\\rv48", "c/Programme/RV48"}};
  for (const auto& c : cases)
    EXPECT_EQ(root_.resolve(c.site).string(), (root_.path() / hostPath(c.host)).make_preferred().string())
        << c.site;
  EXPECT_EQ(root_.sitePathOf(root_.resolve("C:\\programme\\rv48\\one.mac")), "c:\\Programme\\RV48\\one.mac");
  const std::string outside = SiteRoot::nativePath("C:\\No such\\x.mac");
  EXPECT_EQ(outside, "\\\\?\\c:\\No such\\x.mac");
  EXPECT_EQ(root_.resolve(outside).string(), "c:\\No such\\x.mac");
  EXPECT_EQ(root_.sitePathOf(root_.resolve(outside)), outside);
  EXPECT_EQ(chosenPath(root_, "C:/No such/x.mac"), outside);
  EXPECT_EQ(root_.resolve(chosenPath(root_, host("c/k\u00FCche/X.mac"))),
            root_.resolve("c:\\K\u00FCche\\x.mac"));
  EXPECT_EQ(root_.resolve("\\\\no-server\\share\\a\\b.mac").string(), "\\\\no-server\\share\\a\\b.mac");
}

TEST_F(SiteRootTest, WithoutANamedRootASitePathIsTheHosts) {
  ::SetEnvironmentVariableW(L"TESSALY_ROOT", nullptr);
  const SiteRoot computer = SiteRoot::fromEnvironment("");
  EXPECT_TRUE(computer.option().empty());
  EXPECT_EQ(computer.path().filename(), "Tessaly");
  EXPECT_EQ(computer.resolve("C:\\No such\\x.mac").string(), "c:\\No such\\x.mac");
  EXPECT_EQ(computer.sitePathOf("C:\\No such"), "c:\\No such");
  EXPECT_EQ(chosenPath(computer, "C:/No such/x.mac"), "c:\\No such\\x.mac");
  EXPECT_EQ(computer.resolve("history\\x").string(), (computer.path() / "history\\x").string());
  ::SetEnvironmentVariableW(L"TESSALY_ROOT", root_.path().c_str());
  EXPECT_EQ(SiteRoot::fromEnvironment("").path(), root_.path());
  EXPECT_EQ(SiteRoot::fromEnvironment("c:\\chosen\\").option(), "c:\\chosen");
  ::SetEnvironmentVariableW(L"TESSALY_ROOT", nullptr);
}

TEST_F(SiteRootTest, NothingLeadsOut) {
  using std::string_view_literals::operator""sv;
  for (const std::string_view path :
       {""sv, ".."sv, "c:\\a\\..\\b"sv, "c:..\\x"sv, "c:\\a\0b"sv, "\\\\.\\COM1"sv, "\\\\?\\GLOBALROOT\\x"sv,
        "c:\\CON"sv, "c:\\a\\nul.txt\\b"sv})
    EXPECT_TRUE(root_.resolve(path).empty()) << path;
  for (const std::string_view name :
       {""sv, "."sv, ".."sv, "a/b"sv, "a\\b"sv, "c:"sv, "a\0"sv, "prn.mac"sv, "a*"sv})
    EXPECT_FALSE(isPlainName(name)) << name;
  EXPECT_TRUE(isPlainName("console.mac"));
}

}  // namespace
}  // namespace tessaly
