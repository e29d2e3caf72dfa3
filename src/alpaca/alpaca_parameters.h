#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace nbx::alpaca {

// The parameters of one Alpaca request: the query of a GET, whose names
// count in any case, or the form-encoded body of a PUT, whose names count
// only as the API spells them.
class AlpacaParameters {
 public:
  enum class Names { AnyCase, ExactCase };
  AlpacaParameters(const QByteArray& formEncoded, Names names);

  enum class Found { Once, Missing, Repeated };
  Found Find(const QString& name, QString& value) const;

  // An unsigned 32-bit number; 0 when missing, repeated or not such a number,
  // as clients expect of the transaction numbers.
  quint32 TransactionNumber(const QString& name) const;

 private:
  QList<QPair<QString, QString>> items_;
  Names names_;
};

}  // namespace nbx::alpaca
