#include "alpaca/alpaca_parameters.h"

namespace nbx::alpaca {
namespace {

// A form's "+" is a blank; the rest is percent-encoded UTF-8.
QString FormDecoded(QByteArray part) {
  part.replace('+', ' ');
  return QString::fromUtf8(QByteArray::fromPercentEncoding(part));
}

}  // namespace

AlpacaParameters::AlpacaParameters(const QByteArray& formEncoded, Names names) : names_(names) {
  for (const QByteArray& pair : formEncoded.split('&')) {
    if (pair.isEmpty()) continue;
    const qsizetype equals = pair.indexOf('=');
    if (equals < 0)
      items_.append({FormDecoded(pair), QString()});
    else
      items_.append({FormDecoded(pair.left(equals)), FormDecoded(pair.mid(equals + 1))});
  }
}

AlpacaParameters::Found AlpacaParameters::Find(const QString& name, QString& value) const {
  const Qt::CaseSensitivity cs = names_ == Names::AnyCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
  Found found = Found::Missing;
  for (const auto& [key, text] : items_) {
    if (key.compare(name, cs) != 0) continue;
    if (found == Found::Once) return Found::Repeated;
    found = Found::Once;
    value = text;
  }
  return found;
}

quint32 AlpacaParameters::TransactionNumber(const QString& name) const {
  QString text;
  if (Find(name, text) != Found::Once) return 0;
  bool ok = false;
  const qulonglong number = text.trimmed().toULongLong(&ok);
  return ok && number <= 0xFFFFFFFFull ? static_cast<quint32>(number) : 0;
}

}  // namespace nbx::alpaca
