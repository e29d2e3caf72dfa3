// The manual that F1 and "Contents ..." open: a page for every tab and
// sub-tab, and every link inside it leading somewhere.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "ui/help/manual.h"

namespace nbx {
namespace {

QString Read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// True when the page exists and, with an anchor, holds that id.
bool Resolves(const QString& folder, const QString& link) {
  const QString page = link.section('#', 0, 0), anchor = link.section('#', 1);
  const QString html = Read(folder + "/" + page);
  return !html.isEmpty() && (anchor.isEmpty() || html.contains("id=\"" + anchor + "\""));
}

TEST(Manual, EveryTabHasItsPageAndEveryLinkResolves) {
  const QString folder = NBX_MANUAL_SOURCE;
  // The window's help contexts: contents, the tabs, the sub-tabs of "Setup".
  QStringList pages;
  for (int context : {0, 2001, 2002, 2003, 2004, 2051, 2052, 2053, 2054, 2055, 2061})
    pages << ManualPageForContext(context);
  EXPECT_EQ(QSet<QString>(pages.begin(), pages.end()).size(), 11) << "a page or anchor each";
  for (const QString& page : pages) EXPECT_TRUE(Resolves(folder, page)) << page.toStdString();

  const QRegularExpression href("href=\"([^\":]+)\"");
  for (const QString& file : QDir(folder).entryList({"*.html"})) {
    const QString html = Read(folder + "/" + file);
    EXPECT_TRUE(html.contains("<title>")) << file.toStdString();
    for (auto m = href.globalMatch(html); m.hasNext();) {
      QString link = m.next().captured(1);
      if (link.startsWith('#')) link = file + link;
      EXPECT_TRUE(Resolves(folder, link)) << file.toStdString() << " -> " << link.toStdString();
    }
  }
}

}  // namespace
}  // namespace nbx
