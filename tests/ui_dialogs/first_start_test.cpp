// The first start of a new installation, answered at the screen, against the
// simulated box on a pseudo-terminal.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>

#include "core/nimbometer.h"
#include "station/station.h"
#include "support/station_programs.h"
#include "ui/first_run/first_start.h"
#include "ui/first_run/initial_form.h"
#include "ui_dialogs/modal_script.h"

namespace nbx {
namespace {

using test::ModalScript;
using test::Press;

enum class Port { Box, SilentBox, Missing };

// The form's step: the port typed in, tried, and the form closed by `button`.
ModalScript::Step FillForm(const std::string& port, QString& testResult, const char* button) {
  return [&testResult, port, button](QWidget* form) {
    form->findChild<QComboBox*>("COMPort")->setEditText(QString::fromStdString(port));
    test::Click(form, "Test Port");
    QMetaObject::invokeMethod(form, [form, &testResult, button] {
      testResult = form->findChild<QLabel*>("StatMsg")->text();
      test::Click(form, button);
    }, Qt::QueuedConnection);
  };
}

TEST(FirstStart, RoleQuestionFormAndFirstContact) {
  const char* silent = "Device is not communicating.\r\nCheck device Power and Serial cable.\r\nProgram will unload now.";
  const char* missing = "Device is not communicating.\r\nCheck COM port number.\r\nProgram will unload now.";
  struct Case {
    const char* what;
    std::int32_t initialized;
    const char* answer;      // to "Is this the MASTER installation ?"
    const char* formButton;  // nullptr: no form
    Port port;
    FirstStartOutcome outcome;
    std::int32_t initializedAfter;
    const char* lastMessage;
  } cases[] = {
      {"cancel", 0, "Cancel", nullptr, Port::Box, FirstStartOutcome::Unload, 0, "Is this"},
      {"remote, asked again", 3, "No", nullptr, Port::Box, FirstStartOutcome::Ready, 1, "Is this"},
      {"form cancelled", 0, "Yes", "Cancel", Port::Box, FirstStartOutcome::Unload, 0, "Is this"},
      {"master", 0, "Yes", "OK", Port::Box, FirstStartOutcome::Ready, 2, "Is this"},
      {"no such port", 0, "Yes", "OK", Port::Missing, FirstStartOutcome::Unload, 0, missing},
      {"silent box", 0, "Yes", "OK", Port::SilentBox, FirstStartOutcome::Unload, 0, silent},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    test::TempDir dir;
    test::BoxProgram box(dir, c.port == Port::SilentBox ? std::vector<std::string>{"silent=1"}
                                                        : std::vector<std::string>{});
    ASSERT_TRUE(box.ready);
    const std::string port = c.port == Port::Missing ? dir.File("ttyNone") : box.link;
    Station station;
    Nimbometer& nm = station.nm();
    nm.state.DeviceInitialized = c.initialized;
    nm.config.PORTTimeout = 1;
    nm.config.LblPathName = dir.path();
    QString testResult;
    std::vector<ModalScript::Step> steps{Press(c.answer)};
    if (c.formButton) steps.push_back(FillForm(port, testResult, c.formButton));
    steps.push_back(Press("OK"));  // the message that the box is silent, if it comes
    ModalScript script(steps);
    bool deviceTabShown = false;
    FirstStartWindow window{nullptr, [&] { deviceTabShown = true; }, {}, {}};

    EXPECT_EQ(RunFirstStart(station, window), c.outcome);
    EXPECT_EQ(nm.state.DeviceInitialized, c.initializedAfter);
    EXPECT_EQ(nm.IsMaster(), std::string(c.answer) != "No");
    EXPECT_EQ(deviceTabShown, c.formButton != nullptr);
    const QString tried = !c.formButton ? "" : c.port == Port::Missing ? "Serial port " : "Port can be opened, probably OK";
    EXPECT_EQ(testResult.left(tried.size()), tried);
    ASSERT_FALSE(script.messages.isEmpty());
    EXPECT_TRUE(script.messages.last().startsWith(c.lastMessage)) << script.messages.last().toStdString();
    EXPECT_EQ(script.unexpected, 0);
    EXPECT_FALSE(nm.display.WarningCOMPort.Visible);
    if (c.initializedAfter == 2) {
      EXPECT_NE(nm.state.FirmwareMajor, 0);
      EXPECT_TRUE(nm.state.IsRunning);
      EXPECT_EQ(nm.config.PortName, port);
      EXPECT_EQ(nm.config.NetPathMaster, dir.path());
      EXPECT_EQ(nm.config.GraphImagePath, dir.path());
      EXPECT_EQ(nm.config.LblPathNameCCDAP4, dir.path());
    } else if (c.formButton && std::string(c.formButton) == "Cancel") {
      EXPECT_TRUE(nm.config.PortName.empty()) << "a cancelled form changes nothing";
    }
  }
}

TEST(FirstStart, FolderMustBeWritable) {
  test::TempDir dir;
  Nimbometer nm;
  nm.config.LblPathName = dir.path();
  InitialForm form(nm);
  auto* path = form.findChild<QLabel*>("LBLPath");
  for (const std::string& folder : {std::string("/proc"), dir.File("night")}) {
    QDir().mkpath(QString::fromStdString(folder));
    ModalScript script({Press("OK")});
    const bool writable = folder != "/proc";
    EXPECT_EQ(form.UsePath(QString::fromStdString(folder)), writable);
    EXPECT_EQ(path->text().toStdString(), writable ? folder : dir.path());
    EXPECT_EQ(script.messages.size(), writable ? 0 : 1) << folder;
  }
}

}  // namespace
}  // namespace nbx
