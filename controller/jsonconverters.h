#ifndef JSONCONVERTERS_H
#define JSONCONVERTERS_H

#include <QJsonValue>
#include <QString>

#include <functional>

// Turns one JSON value of a scenario into a typed value, or says why it cannot.
template <typename T>
using JsonConverter = std::function<bool(const QJsonValue& value, T* out, QString* why)>;

namespace JsonConverters {

JsonConverter<bool> flag();
JsonConverter<int> integer(int low, int high);
JsonConverter<double> real(double low, double high);
// Texts end up in reply lines, so neither takes control characters: a line break would
// make the controller answer one request with two lines.
JsonConverter<QString> word();     // one word without blanks, as the protocol carries names
JsonConverter<QString> text();     // any text, blanks allowed
JsonConverter<QString> verbatim(); // any text at all, for garbage a fault answers on purpose

} // namespace JsonConverters

#endif // JSONCONVERTERS_H
