#include "alpaca_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QJsonDocument>

namespace nbx::test {
namespace {

sockaddr_in Loopback(int port) {
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_port = htons(static_cast<uint16_t>(port));
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return a;
}

bool Readable(int fd, int timeoutMs) {
  pollfd p{fd, POLLIN, 0};
  return poll(&p, 1, timeoutMs) == 1;
}

}  // namespace

HttpReply Http(int port, const std::string& method, const std::string& target, const std::string& body) {
  HttpReply reply;
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in a = Loopback(port);
  if (connect(fd, reinterpret_cast<const sockaddr*>(&a), sizeof a) != 0) {
    close(fd);
    return reply;
  }
  std::string request = method + " " + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n";
  if (method == "PUT")
    request += "Content-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
               std::to_string(body.size()) + "\r\n";
  request += "\r\n" + body;
  (void)send(fd, request.data(), request.size(), MSG_NOSIGNAL);
  std::string answer;
  char chunk[4096];
  while (Readable(fd, 5000)) {
    const ssize_t n = recv(fd, chunk, sizeof chunk, 0);
    if (n <= 0) break;
    answer.append(chunk, static_cast<std::size_t>(n));
    // The answer is whole once the body has the length its header gives.
    const std::size_t end = answer.find("\r\n\r\n");
    const std::size_t length = answer.find("Content-Length: ");
    if (end != std::string::npos && length != std::string::npos && length < end &&
        answer.size() >= end + 4 + std::stoul(answer.substr(length + 16)))
      break;
  }
  close(fd);
  if (answer.rfind("HTTP/1.1 ", 0) != 0) return reply;
  reply.status = std::stoi(answer.substr(9, 3));
  const std::size_t end = answer.find("\r\n\r\n");
  if (end != std::string::npos) reply.body = answer.substr(end + 4);
  reply.json = QJsonDocument::fromJson(QByteArray::fromStdString(reply.body)).object();
  return reply;
}

HalfRequest::HalfRequest(int port, const std::string& start) : fd_(socket(AF_INET, SOCK_STREAM, 0)) {
  const sockaddr_in a = Loopback(port);
  if (connect(fd_, reinterpret_cast<const sockaddr*>(&a), sizeof a) == 0)
    (void)send(fd_, start.data(), start.size(), MSG_NOSIGNAL);
}

HalfRequest::~HalfRequest() { close(fd_); }

bool HalfRequest::ClosedWithin(int timeoutMs) {
  char byte;
  return Readable(fd_, timeoutMs) && recv(fd_, &byte, 1, 0) <= 0;
}

std::optional<int> Discover(int discoveryPort) {
  const int fd = socket(AF_INET, SOCK_DGRAM, 0);
  const sockaddr_in a = Loopback(discoveryPort);
  const char question[] = "alpacadiscovery1";
  (void)sendto(fd, question, sizeof question - 1, 0, reinterpret_cast<const sockaddr*>(&a), sizeof a);
  std::optional<int> port;
  char answer[256] = {};
  if (Readable(fd, 3000) && recv(fd, answer, sizeof answer - 1, 0) > 0) {
    const QJsonObject json = QJsonDocument::fromJson(QByteArray(answer)).object();
    if (json.contains("AlpacaPort")) port = json.value("AlpacaPort").toInt();
  }
  close(fd);
  return port;
}

int FreePort(int socketType) {
  const int fd = socket(AF_INET, socketType, 0);
  sockaddr_in a = Loopback(0);
  socklen_t size = sizeof a;
  bind(fd, reinterpret_cast<const sockaddr*>(&a), sizeof a);
  getsockname(fd, reinterpret_cast<sockaddr*>(&a), &size);
  close(fd);
  return ntohs(a.sin_port);
}

}  // namespace nbx::test
