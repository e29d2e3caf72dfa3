#include "alpaca/alpaca_server.h"

#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <QTcpSocket>
#include <QUuid>

#include "alpaca/connection_guard.h"
#include "alpaca/setup_page.h"
#include "automation/computed_members.h"

namespace nbx::alpaca {

struct AlpacaServer::Reply {
  QHttpServerResponder::StatusCode status = QHttpServerResponder::StatusCode::Ok;
  const char* mime = "application/json";
  QByteArray body;
};

namespace {

using Status = QHttpServerResponder::StatusCode;

const DeviceInfo* FindDevice(const QString& urlName) {
  for (const DeviceInfo& d : Devices)
    if (urlName == QLatin1String(d.urlName)) return &d;
  return nullptr;
}

}  // namespace

AlpacaServer::AlpacaServer(Nimbometer& nm, const QString& installation, QObject* parent)
    : QAbstractHttpServer(parent), nm_(nm), devices_(nm), installation_(installation) {}

bool AlpacaServer::Listen(const QHostAddress& address, quint16 port, QString& error) {
  auto* tcp = new GuardedTcpServer(this);
  if (!tcp->listen(address, port)) {
    error = tcp->errorString();
    delete tcp;
    return false;
  }
  tcp_ = tcp;
  bind(tcp);
  return true;
}

quint16 AlpacaServer::Port() const { return tcp_ ? tcp_->serverPort() : 0; }

QString AlpacaServer::UniqueID(const DeviceInfo& device) const {
  static const QUuid space = QUuid::fromString(QStringLiteral("{6d1c2f57-3a0e-4c1b-9a52-0b1e4e8f6a10}"));
  const QByteArray name = QSysInfo::machineUniqueId() + '|' + installation_.toUtf8() + '|' + device.urlName;
  return QUuid::createUuidV5(space, name).toString(QUuid::WithoutBraces);
}

void AlpacaServer::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) {
  makeResponder(request, socket).write("Not found\n", "text/plain", Status::BadRequest);
}

bool AlpacaServer::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) {
  if (tcp_) tcp_->RequestDone(socket);
  Reply reply = Route(request);
  makeResponder(request, socket).write(reply.body, reply.mime, reply.status);
  return true;
}

AlpacaServer::Reply AlpacaServer::Route(const QHttpServerRequest& request) {
  const bool isPut = request.method() == QHttpServerRequest::Method::Put;
  if (!isPut && request.method() != QHttpServerRequest::Method::Get)
    return {Status::BadRequest, "text/plain", "Only GET and PUT are answered\n"};
  const QStringList path = request.url().path().split(u'/', Qt::SkipEmptyParts);
  const AlpacaParameters parameters(
      isPut ? request.body() : request.url().query(QUrl::FullyEncoded).toUtf8(),
      isPut ? AlpacaParameters::Names::ExactCase : AlpacaParameters::Names::AnyCase);
  if (path.value(0) == u"api" && path.value(1) == u"v1" && path.size() == 5)
    return Device(path, isPut, parameters);
  if (path.value(0) == u"management" && !isPut) return Management(path, parameters);
  if (!isPut && (path.isEmpty() || path == QStringList{QStringLiteral("setup")})) return SetupPage(nullptr);
  if (!isPut && path.size() == 5 && path[0] == u"setup" && path[1] == u"v1" && path[3] == u"0" &&
      path[4] == u"setup")
    if (const DeviceInfo* device = FindDevice(path[2])) return SetupPage(device);
  return {Status::BadRequest, "text/plain", "No Alpaca resource at " + request.url().path().toUtf8() + "\n"};
}

AlpacaServer::Reply AlpacaServer::Management(const QStringList& path, const AlpacaParameters& p) {
  if (path == QStringList{QStringLiteral("management"), QStringLiteral("apiversions")})
    return {Status::Ok, "application/json", Envelope(p, {QJsonArray{1}, 0, {}, {}})};
  if (path.size() == 3 && path[1] == u"v1" && path[2] == u"description") {
    const QJsonObject description{
        {QStringLiteral("ServerName"), QStringLiteral("NBX Nimbometer")},
        {QStringLiteral("Manufacturer"), QStringLiteral("NBX")},
        {QStringLiteral("ManufacturerVersion"), QString::fromStdString(VersionNumber())},
        {QStringLiteral("Location"), QSysInfo::machineHostName()}};
    return {Status::Ok, "application/json", Envelope(p, {description, 0, {}, {}})};
  }
  if (path.size() == 3 && path[1] == u"v1" && path[2] == u"configureddevices") {
    QJsonArray list;
    for (const DeviceInfo& d : Devices)
      list.append(QJsonObject{{QStringLiteral("DeviceName"), QStringLiteral("NBX Nimbometer %1").arg(d.typeName)},
                              {QStringLiteral("DeviceType"), QString::fromLatin1(d.typeName)},
                              {QStringLiteral("DeviceNumber"), 0},
                              {QStringLiteral("UniqueID"), UniqueID(d)}});
    return {Status::Ok, "application/json", Envelope(p, {list, 0, {}, {}})};
  }
  return {Status::BadRequest, "text/plain", "No management resource at /" + path.join(u'/').toUtf8() + "\n"};
}

AlpacaServer::Reply AlpacaServer::Device(const QStringList& path, bool isPut, const AlpacaParameters& p) {
  const DeviceInfo* device = FindDevice(path[2]);
  if (!device) return {Status::BadRequest, "text/plain", "No device type " + path[2].toUtf8() + "\n"};
  if (path[3] != u"0")
    return {Status::BadRequest, "text/plain",
            "No " + QByteArray(device->typeName) + " number " + path[3].toUtf8() + "\n"};
  const MemberResult result = devices_.Answer(*device, path[4], isPut, p);
  if (!result.badRequest.isEmpty())
    return {Status::BadRequest, "text/plain", result.badRequest.toUtf8() + "\n"};
  return {Status::Ok, "application/json", Envelope(p, result)};
}

AlpacaServer::Reply AlpacaServer::SetupPage(const DeviceInfo* device) const {
  const SetupFacts facts{nm_, *this, device, devices_};
  return {Status::Ok, "text/html; charset=utf-8", SetupPageHtml(facts)};
}

QByteArray AlpacaServer::Envelope(const AlpacaParameters& p, const MemberResult& result) {
  QJsonObject body;
  if (!result.value.isUndefined()) body.insert(QStringLiteral("Value"), result.value);
  body.insert(QStringLiteral("ClientTransactionID"), static_cast<qint64>(p.TransactionNumber(QStringLiteral("ClientTransactionID"))));
  body.insert(QStringLiteral("ServerTransactionID"), static_cast<qint64>(++serverTransaction_));
  body.insert(QStringLiteral("ErrorNumber"), result.errorNumber);
  body.insert(QStringLiteral("ErrorMessage"), result.errorMessage);
  return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

}  // namespace nbx::alpaca
