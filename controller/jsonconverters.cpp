#include "jsonconverters.h"

#include <cmath>

namespace {

// Why a text of the document cannot go into a reply line; empty when it can.
QString controlCharacterIn(const QString& text)
{
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control)
            return QStringLiteral("holds a control character (U+%1)")
                .arg(QString::number(c.unicode(), 16).toUpper().rightJustified(4, QLatin1Char('0')));
    }
    return QString();
}

} // namespace

namespace JsonConverters {

JsonConverter<bool> flag()
{
    return [](const QJsonValue& value, bool* out, QString* why) {
        if (!value.isBool()) {
            *why = QStringLiteral("expected true or false");
            return false;
        }
        *out = value.toBool();
        return true;
    };
}

JsonConverter<int> integer(int low, int high)
{
    return [low, high](const QJsonValue& value, int* out, QString* why) {
        const double number = value.toDouble();
        if (!value.isDouble() || number != std::floor(number)) {
            *why = QStringLiteral("expected a whole number");
            return false;
        }
        if (number < low || number > high) {
            *why = QStringLiteral("%1 is outside %2 to %3").arg(number).arg(low).arg(high);
            return false;
        }
        *out = int(number);
        return true;
    };
}

JsonConverter<double> real(double low, double high)
{
    return [low, high](const QJsonValue& value, double* out, QString* why) {
        if (!value.isDouble()) {
            *why = QStringLiteral("expected a number");
            return false;
        }
        const double number = value.toDouble();
        if (number < low || number > high) {
            *why = QStringLiteral("%1 is outside %2 to %3").arg(number).arg(low).arg(high);
            return false;
        }
        *out = number;
        return true;
    };
}

JsonConverter<QString> word()
{
    return [](const QJsonValue& value, QString* out, QString* why) {
        const QString text = value.toString();
        if (!value.isString() || text.isEmpty() || text.contains(QLatin1Char(' '))) {
            *why = QStringLiteral("expected a single word");
            return false;
        }
        *why = controlCharacterIn(text);
        if (!why->isEmpty())
            return false;
        *out = text;
        return true;
    };
}

JsonConverter<QString> text()
{
    const JsonConverter<QString> anyText = verbatim();
    return [anyText](const QJsonValue& value, QString* out, QString* why) {
        QString text;
        if (!anyText(value, &text, why))
            return false;
        *why = controlCharacterIn(text);
        if (!why->isEmpty())
            return false;
        *out = text;
        return true;
    };
}

JsonConverter<QString> verbatim()
{
    return [](const QJsonValue& value, QString* out, QString* why) {
        if (!value.isString()) {
            *why = QStringLiteral("expected a text");
            return false;
        }
        *out = value.toString();
        return true;
    };
}

} // namespace JsonConverters
