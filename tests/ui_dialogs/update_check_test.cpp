// The update check against a real HTTP server on a loopback port: the three
// files, the news, the handover file, the versions, and every way a check
// can fail without writing more than it already had.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "core/nimbometer.h"
#include "station/settings_store.h"
#include "support/child_process.h"
#include "ui/dialogs/about/about_dialog.h"
#include "ui/dialogs/update/update_form.h"
#include "ui_dialogs/modal_script.h"
#include "ui_dialogs/loopback_server.h"

namespace nbx {
namespace {

const QString Installed = VersionNumberText(NBX_VERSION_MAJOR, NBX_VERSION_MINOR, NBX_VERSION_PATCH);
const QByteArray Updater("run=nimbometer\r\n\0\xff\x01 end", 24);

struct Check {
  test::TempDir dir;
  IniSettings store{QString::fromStdString(dir.File("station.ini"))};
  Nimbometer nm;
  test::LoopbackServer server;
  std::unique_ptr<UpdateForm> form;

  Check() {
    server.answers[NewsFilePath] = {200, "old"};
    server.answers[VersionFilePath] = {200, "9.99.999\r\n"};
    server.answers[UpdaterFilePath] = {200, Updater};
    nm.config.UpdateBaseURL = server.base().toStdString() + "/";
    store.Save("Window", "NBX_News", "earlier news");
    form = std::make_unique<UpdateForm>(nm, store, QString::fromStdString(dir.path()));
    form->move(30, 40);
  }
  QString status() const { return form->findChild<QLabel*>("Label3")->text(); }
  std::string news() { return store.Get("Window", "NBX_News", "(none)"); }
  QString handover() const { return QString::fromStdString(dir.File("NBX_Updater.txt")); }
  void Press(const char* button) { form->findChild<QPushButton*>(button)->click(); }
  bool RunCheck() {
    Press("Command1");
    return QTest::qWaitFor([this] { return form->findChild<QPushButton*>("Command1")->isEnabled(); }, 5000);
  }
};

TEST(UpdateCheck, FetchesTheFilesHandsOverAndShowsLongerNews) {
  struct Row {
    QByteArray news;
    QByteArray version;  // as served
    bool discard;        // ticked in the news window
    bool asked;          // the same version: "Update" asks first
    const char* answer;
  } rows[] = {
      {"", Installed.toLatin1(), false, true, "No"},
      {"a", "7.0.0", false, false, nullptr},
      {"ab", Installed.toLatin1() + "\r\n", false, true, "Yes"},
      {"abc", "0" + Installed.toLatin1(), true, false, nullptr},
      {"News\xe9!", " " + Installed.toLatin1(), false, false, nullptr},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.news.toStdString());
    Check c;
    c.server.answers[NewsFilePath].body = row.news;
    c.server.answers[VersionFilePath].body = row.version;
    QStringList shown;
    std::vector<test::ModalScript::Step> steps;
    if (row.news.size() > 2)
      steps.push_back([&](QWidget* news) {
        shown << news->objectName() << news->findChild<QLabel*>("LblMsg")->text();
        news->findChild<QCheckBox*>("ChckMsg")->setChecked(row.discard);
        QMetaObject::invokeMethod(news, "reject", Qt::QueuedConnection);
      });
    if (row.asked) steps.push_back(test::Press(row.answer));
    test::ModalScript script(steps);
    ASSERT_TRUE(c.RunCheck());
    EXPECT_EQ(c.server.requested, (QStringList{NewsFilePath, VersionFilePath, UpdaterFilePath}));
    EXPECT_EQ(c.status().toStdString(), "Sucessful response");
    const QString newsText = QString::fromLatin1(row.news);
    if (row.news.size() > 2) EXPECT_EQ(shown, (QStringList{"NBXDispNews", newsText}));
    EXPECT_EQ(c.news(), row.discard ? "" : newsText.toStdString());
    QFile handover(c.handover());
    ASSERT_TRUE(handover.open(QIODevice::ReadOnly));
    EXPECT_EQ(handover.readAll(), "\"Title\",\"NBX_Nimbometer\",30,40,\"NBX_Nimbometer.exe\"\r\n" + Updater);
    EXPECT_EQ(c.form->findChild<QLabel*>("Label1")->text(), Installed);
    EXPECT_FALSE(c.form->findChild<QGroupBox*>("Frame1")->isHidden());

    c.Press("Command5");
    QTest::qWait(30);
    EXPECT_TRUE(script.done());
    EXPECT_EQ(script.unexpected, 0);
    EXPECT_EQ(script.messages.size(), row.asked ? 1 : 0);
    const bool accepted = !row.answer || QString(row.answer) == "Yes";
    EXPECT_EQ(c.nm.state.NBXUpdate, accepted ? 1 : 0);
    EXPECT_EQ(c.form->result(), accepted ? QDialog::Accepted : 0);
  }
}

TEST(UpdateCheck, EachFailureShowsItsStateAndWritesNothingMore) {
  struct Row {
    const char* what;
    std::function<void(Check&)> arrange;
    const char* status;    // the start of the status label
    bool newsWritten;      // the news step was passed before the failure
    int requests;
  } rows[] = {
      {"no address", [](Check& c) { c.nm.config.UpdateBaseURL = "  "; }, "No update address is set", false, 0},
      {"not http", [](Check& c) { c.nm.config.UpdateBaseURL = "ftp://example.org"; }, "The update address", false, 0},
      {"404 on the news", [](Check& c) { c.server.answers.remove(NewsFilePath); },
       "Communication error: the server answered 404", false, 1},
      {"404 on the version", [](Check& c) { c.server.answers.remove(VersionFilePath); },
       "Communication error: the server answered 404", true, 2},
      {"refused", [](Check& c) {
         QTcpServer closed;
         closed.listen(QHostAddress::LocalHost);
         c.nm.config.UpdateBaseURL = "http://127.0.0.1:" + std::to_string(closed.serverPort());
       }, "Communication error", false, 0},
      {"silent", [](Check& c) {
         c.server.answers[NewsFilePath].silent = true;
         c.form->setTimeoutMs(200);
       }, "Communication error: no answer", false, 1},
      {"huge version", [](Check& c) { c.server.answers[VersionFilePath].body = QByteArray(300, '7'); },
       "Communication error: NBX_Nimbometer.txt is larger than 256 bytes", true, 2},
      {"huge news announced", [](Check& c) {
         c.server.answers[NewsFilePath] = {200, QByteArray(700, 'n'), true};
       }, "Communication error: NBX_NimbometerNews.txt is larger", false, 1},
      {"empty version", [](Check& c) { c.server.answers[VersionFilePath].body = "\r\n"; },
       "The update server has no version", true, 2},
      {"empty updater", [](Check& c) { c.server.answers[UpdaterFilePath].body.clear(); },
       "The update server's NBX_NimbometerUpdater.txt is empty", true, 3},
      {"unwritable folder", [](Check& c) {
         test::WriteFile(c.dir.File("plain"), "a file, not a folder");
         c.form = std::make_unique<UpdateForm>(c.nm, c.store, QString::fromStdString(c.dir.File("plain")));
       }, "The update cannot be handed over", true, 3},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Check c;
    row.arrange(c);
    test::ModalScript closesTheNews;  // the news came before the updater's failures
    ASSERT_TRUE(c.RunCheck());
    EXPECT_TRUE(c.status().startsWith(row.status)) << c.status().toStdString();
    EXPECT_EQ(c.news(), row.newsWritten ? "old" : "earlier news");
    EXPECT_EQ(c.server.requested.size(), row.requests);
    EXPECT_FALSE(QFile::exists(c.handover()));
    EXPECT_TRUE(c.form->findChild<QGroupBox*>("Frame1")->isHidden() ||
                !c.form->findChild<QPushButton*>("Command5")->isEnabled());
    EXPECT_EQ(c.nm.state.NBXUpdate, 0);
  }
}

TEST(UpdateCheck, CancelDuringASlowDownloadDropsTheRequest) {
  for (const char* button : {"Command4", "Command2"}) {
    SCOPED_TRACE(button);
    Check c;
    c.server.answers[UpdaterFilePath] = {200, "first bytes", true};
    c.form->show();
    c.Press("Command1");
    ASSERT_TRUE(QTest::qWaitFor([&] { return c.server.requested.size() == 3 && c.status() == "Receiving a response"; }, 5000));
    EXPECT_TRUE(c.form->busy());
    c.Press(button);
    EXPECT_FALSE(c.form->busy());
    EXPECT_EQ(c.form->result(), QDialog::Rejected);
    EXPECT_TRUE(QTest::qWaitFor([&] { return c.server.dropped == 1; }, 5000));
    EXPECT_FALSE(QFile::exists(c.handover()));
    EXPECT_EQ(c.nm.state.NBXUpdate, 0);
  }
}

}  // namespace
}  // namespace nbx
