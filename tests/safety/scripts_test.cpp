#include <gtest/gtest.h>

#include <filesystem>

#include "night.h"
#include "safety/scripts.h"
#include "support/child_process.h"

namespace nbx {
namespace {

using test::Lines;
using test::Night;

TEST(Scripts, AScriptIsFoundByItsNameWithoutRegardToCase) {
  test::TempDir dir;
  test::WriteFile(dir.File("Open Roof.SH"), "#!/bin/sh\n");
  std::filesystem::create_directory(dir.File("folder.sh"));
  EXPECT_TRUE(ScriptExists(dir.path(), "Open Roof.SH"));
  EXPECT_TRUE(ScriptExists(dir.path(), "open roof.sh"));
  EXPECT_TRUE(ScriptExists(dir.path() + "/", "OPEN ROOF.sh"));
  EXPECT_FALSE(ScriptExists(dir.path(), "close roof.sh"));
  EXPECT_FALSE(ScriptExists(dir.path(), "folder.sh"));
  EXPECT_FALSE(ScriptExists(dir.File("missing"), "open roof.sh"));
  EXPECT_FALSE(ScriptExists(dir.path(), ""));
}

TEST(Scripts, MissingScriptsPutTheirCodesInFront) {
  test::TempDir dir;
  Night n;
  Config& c = n.nm.config;
  std::string codes = "d11 ";
  EXPECT_FALSE(CheckScripts(n.nm, codes));  // none configured
  c.ScriptPathUNSAFE = c.ScriptPathSAFE = dir.path();
  c.ScriptFileUNSAFE = c.ScriptFileSAFE = "   ";  // blanks are no name
  EXPECT_FALSE(CheckScripts(n.nm, codes));
  c.ScriptFileUNSAFE = "close.sh";
  c.ScriptFileSAFE = "open.sh";
  EXPECT_TRUE(CheckScripts(n.nm, codes));
  EXPECT_EQ(codes, "f52 f51 d11 ");
  test::WriteFile(dir.File("open.sh"), "");
  codes.clear();
  EXPECT_TRUE(CheckScripts(n.nm, codes));
  EXPECT_EQ(codes, "f51 ");
}

TEST(Scripts, EachChangeOfTheVerdictRunsItsScriptOnce) {
  test::TempDir dir;
  test::WriteFile(dir.File("close roof.sh"), "");
  test::WriteFile(dir.File("open.sh"), "");
  Night n;
  Config& c = n.nm.config;
  c.ScriptPathUNSAFE = c.ScriptPathSAFE = dir.path();
  c.ScriptFileUNSAFE = "Close Roof.sh";
  c.ScriptFileSAFE = "open.sh";
  c.SafeDelayVal = 30;
  const std::string unsafe = dir.File("close roof.sh"), safe = dir.File("open.sh");

  n.Start();  // the first verdict is a change
  EXPECT_EQ(n.scripts.started, (Lines{safe}));
  n.Sky(Night::Overcast);
  n.Run(3);
  EXPECT_EQ(n.scripts.started, (Lines{safe, unsafe}));
  n.Sky(Night::Clear);
  n.Run(3);  // held unsafe for the delay: no change
  EXPECT_EQ(n.scripts.started.size(), 2u);
  n.Run(2);
  EXPECT_FALSE(n.s.Value_Unsafe);
  EXPECT_EQ(n.scripts.started, (Lines{safe, unsafe, safe}));
  EXPECT_TRUE(n.nm.display.StatusBar2.Caption.empty());
}

TEST(Scripts, AMissingScriptIsReportedAtEachTickAndNeverRun) {
  test::TempDir dir;
  Night n;
  n.nm.config.ScriptPathUNSAFE = dir.path();
  n.nm.config.ScriptFileUNSAFE = "gone.sh";
  n.Start();
  EXPECT_EQ(n.nm.display.StatusBar2.Caption, "f51 ");
  EXPECT_EQ(n.nm.display.StatusBar2.ForeColor, colours::Red);
  n.Sky(Night::Overcast);
  n.Run();
  EXPECT_TRUE(n.s.Value_Unsafe);
  EXPECT_TRUE(n.scripts.started.empty());
  test::WriteFile(dir.File("gone.sh"), "");
  n.Run();
  EXPECT_TRUE(n.nm.display.StatusBar2.Caption.empty());
}

}  // namespace
}  // namespace nbx
