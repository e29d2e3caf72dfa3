// The manual that F1 and "Contents ..." open: a page for every tab and
// sub-tab, and every link inside it leading somewhere.

#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include "support/child_process.h"
#include "ui/help/manual.h"

namespace nbx {
namespace {

const QString folder = NBX_MANUAL_SOURCE;

QString Read(const QString& page) {
  return QString::fromStdString(test::ReadFile((folder + "/" + page).toStdString()));
}

// True when the page exists and, with an anchor, holds that id.
bool Resolves(const QString& link) {
  const QString html = Read(link.section('#', 0, 0)), anchor = link.section('#', 1);
  return !html.isEmpty() && (anchor.isEmpty() || html.contains("id=\"" + anchor + "\""));
}

TEST(Manual, EveryTabHasItsPageAndEveryLinkResolves) {
  // The window's help contexts: contents, the tabs, the sub-tabs of "Setup".
  QSet<QString> pages;
  for (int context : {0, 2001, 2002, 2003, 2004, 2051, 2052, 2053, 2054, 2055, 2061}) {
    pages << ManualPageForContext(context);
    EXPECT_TRUE(Resolves(ManualPageForContext(context))) << context;
  }
  EXPECT_EQ(pages.size(), 11) << "a page or anchor each";
  const QRegularExpression href("href=\"([^\":]+)\"");
  for (const QString& file : QDir(folder).entryList({"*.html"})) {
    const QString html = Read(file);
    EXPECT_TRUE(html.contains("<title>")) << file.toStdString();
    for (auto m = href.globalMatch(html); m.hasNext();) {
      const QString link = m.next().captured(1);
      EXPECT_TRUE(Resolves(link.startsWith('#') ? file + link : link))
          << file.toStdString() << " -> " << link.toStdString();
    }
  }
}

}  // namespace
}  // namespace nbx
