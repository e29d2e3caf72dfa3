#include "alpaca/setup_page.h"

#include <QString>

#include "alpaca/alpaca_server.h"
#include "alpaca/station_answers.h"
#include "core/nimbometer.h"

namespace nbx::alpaca {
namespace {

QString Row(const QString& name, const QString& value) {
  return QStringLiteral("<tr><th>%1</th><td>%2</td></tr>\n").arg(name.toHtmlEscaped(), value.toHtmlEscaped());
}

QString Std(const std::string& text) { return QString::fromStdString(text); }

QString StationRows(const Nimbometer& nm) {
  const std::string why = WhyNoGoodReading(nm);
  QString rows = Row(QStringLiteral("Station"), nm.state.IsRunning ? QStringLiteral("running")
                                                                   : QStringLiteral("stopped"));
  rows += Row(QStringLiteral("Verdict"), IsSafe(nm) ? QStringLiteral("SAFE") : QStringLiteral("UNSAFE"));
  rows += Row(QStringLiteral("Readings"), why.empty() ? QStringLiteral("good") : Std(why));
  return rows;
}

QString SettingsRows(const Nimbometer& nm, const AlpacaServer& server) {
  const Config& c = nm.config;
  QString rows = Row(QStringLiteral("Address"), Std(c.AlpacaAddress));
  rows += Row(QStringLiteral("Port"), QString::number(server.Port()));
  rows += Row(QStringLiteral("Discovery"), c.AlpacaDiscovery ? QStringLiteral("answered on UDP %1").arg(c.AlpacaDiscoveryPort)
                                                             : QStringLiteral("off"));
  return rows;
}

}  // namespace

QByteArray SetupPageHtml(const SetupFacts& f) {
  QString title = QStringLiteral("NBX Nimbometer");
  QString rows = StationRows(f.nm);
  if (f.device) {
    title += QStringLiteral(" %1").arg(f.device->typeName);
    rows += Row(QStringLiteral("Connected"), f.devices.Connected(f.device->type) ? QStringLiteral("yes")
                                                                                   : QStringLiteral("no"));
    rows += Row(QStringLiteral("Unique ID"), f.server.UniqueID(*f.device));
  }
  rows += SettingsRows(f.nm, f.server);
  const QString page = QStringLiteral(
                           "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>%1</title></head>\n"
                           "<body><h1>%1</h1>\n<table>\n%2</table>\n"
                           "<p>These settings are read from section Alpaca of the station's settings "
                           "file; change them there or in the window, then start the station again.</p>\n"
                           "</body></html>\n")
                           .arg(title.toHtmlEscaped(), rows);
  return page.toUtf8();
}

}  // namespace nbx::alpaca
