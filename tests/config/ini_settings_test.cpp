#include <gtest/gtest.h>

#include "config/settings_order.h"
#include "core/nimbometer.h"
#include "station/settings_store.h"
#include "support/child_process.h"

namespace nbx {
namespace {

using test::TempDir;

const LoadContext kEnglish{"/home/observer/Documents", '.', false};

TEST(IniSettings, AHandWrittenFileIsReadAndSavedWithoutLosingForeignKeys) {
  TempDir dir;
  const std::string file = dir.File("station.ini");
  test::WriteFile(file,
                  "[Communication]\nRS232Setup=9600,n,8,1\nPortName=/dev/ttyUSB0\nRefreshPeriod=3\n"
                  "[SQM]\nDarkReferenceValue=19,6\n"
                  "[Description]\nClear=Tr\xC3\xA8s clair\n"
                  "[Window]\nUnitsTemp0=Falsch\nUnitsTemp=True\nFutureKey=kept too\n"
                  "[LaterVersion]\nNewKey=kept\n");
  Nimbometer nm;
  {
    IniSettings store(QString::fromStdString(file));
    EXPECT_TRUE(store.CheckReadable());
    LoadSettings(store, nm, kEnglish);
    // Commas that the INI format would take for lists, and UTF-8 text.
    EXPECT_EQ(nm.config.CommSettings, "9600,n,8,1");
    EXPECT_DOUBLE_EQ(nm.config.DarkReference, 19.6);
    EXPECT_EQ(nm.config.ColorCloud[0].Caption, "Tr\xC3\xA8s clair");

    nm.config.RefreshPeriod = 4;
    ASSERT_TRUE(UnloadSettings(store, nm, {'.', false}));
    EXPECT_TRUE(store.Flush());
  }
  // The file on disk as a plain reader sees it.
  const std::string text = test::ReadFile(file);
  for (const char* line : {"RS232Setup=\"9600,n,8,1\"\n", "RefreshPeriod=4\n", "UnitsTemp0=False\n",
                           "FutureKey=kept too\n", "[LaterVersion]\nNewKey=kept\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;

  // And read back by the program, the same configuration.
  IniSettings again(QString::fromStdString(file));
  Nimbometer reloaded;
  LoadSettings(again, reloaded, kEnglish);
  EXPECT_TRUE(reloaded.config == nm.config);
}

TEST(IniSettings, AFileThatCannotBeReadOrWrittenIsReportedAndGivesDefaults) {
  TempDir dir;
  test::WriteFile(dir.File("plain-file"), "x");
  {  // a folder where the file should be
    IniSettings store(QString::fromStdString(dir.path()));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(store.CheckReadable());
    EXPECT_EQ(store.Get("Communication", "RS232Setup", "9600,n,8,1"), "9600,n,8,1");
    store.Save("Communication", "Port", "2");
    EXPECT_FALSE(store.Flush());
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("cannot read the settings file " + dir.path()), std::string::npos) << errors;
    EXPECT_NE(errors.find("cannot write the settings file " + dir.path()), std::string::npos) << errors;
  }
  {  // a file whose folder cannot exist
    const std::string file = dir.File("plain-file/station.ini");
    IniSettings store(QString::fromStdString(file));
    EXPECT_TRUE(store.CheckReadable());  // absent: a fresh installation
    store.Save("Communication", "Port", "2");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(store.Flush());
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot write the settings file " + file),
              std::string::npos);
  }
}

}  // namespace
}  // namespace nbx
