#pragma once

#include <QJsonObject>
#include <optional>
#include <string>

namespace nbx::test {

// One HTTP exchange on its own connection to 127.0.0.1; status 0 when the
// server closed the connection without an answer.
struct HttpReply {
  int status = 0;
  std::string body;
  QJsonObject json;  // the body, when it is a JSON object
};
HttpReply Http(int port, const std::string& method, const std::string& target, const std::string& body = {});

// A connection that sends `start` of a request and no more; it tells when
// the server has closed it.
class HalfRequest {
 public:
  HalfRequest(int port, const std::string& start);
  ~HalfRequest();
  bool ClosedWithin(int timeoutMs);

 private:
  int fd_;
};

// The AlpacaPort of the answer to "alpacadiscovery1" sent to 127.0.0.1.
std::optional<int> Discover(int discoveryPort);

// A port nothing on 127.0.0.1 listens on now, for SOCK_STREAM or SOCK_DGRAM.
int FreePort(int socketType);

}  // namespace nbx::test
