#include "settingvalue.h"

#include <QLocale>

#include <climits>
#include <cmath>

namespace SettingValue {

namespace {

using Kind = SettingDefinition::Kind;

// Names the controller gives (mode keys, display setting ids) are single printable
// words; anything else would change the command line it is written into.
bool isWord(const QByteArray& text)
{
    if (text.isEmpty() || text.size() > 64)
        return false;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= 0x20 || byte >= 0x7f || c == '"')
            return false;
    }
    return true;
}

// "d01 ch03": a channel of sync card 1, two or three digits as the controller writes them.
bool isGroup(const QByteArray& text)
{
    static const QByteArray prefix("d01 ch");
    if (!text.startsWith(prefix) || text.size() < prefix.size() + 2 || text.size() > prefix.size() + 3)
        return false;
    for (int i = prefix.size(); i < text.size(); ++i) {
        if (text.at(i) < '0' || text.at(i) > '9')
            return false;
    }
    return true;
}

bool isWhole(double value)
{
    return std::isfinite(value) && value == std::floor(value) && value >= INT_MIN && value <= INT_MAX;
}

QString expectation(Kind kind)
{
    switch (kind) {
    case Kind::Integer: return QStringLiteral("expected a whole number");
    case Kind::Number: return QStringLiteral("expected a number");
    case Kind::Flag: return QStringLiteral("expected \"yes\" or \"no\"");
    case Kind::MarkerMode: return QStringLiteral("expected \"default\", \"accurate\" or \"fast\"");
    case Kind::Word: return QStringLiteral("expected a single word");
    case Kind::SyncGroup: return QStringLiteral("expected \"none\" or a sync group such as \"d01 ch03\"");
    case Kind::Exposure: return QStringLiteral("expected milliseconds or \"auto\"");
    }
    return QString();
}

bool store(QJsonValue* out, const QJsonValue& value)
{
    if (out)
        *out = value;
    return true;
}

} // namespace

bool fromWire(Kind kind, const QByteArray& text, QJsonValue* value)
{
    bool ok = false;
    switch (kind) {
    case Kind::Integer: {
        const int number = text.toInt(&ok, 10);
        return ok && store(value, number);
    }
    case Kind::Number: {
        const double number = text.toDouble(&ok);
        return ok && std::isfinite(number) && store(value, number);
    }
    case Kind::Exposure: {
        if (text == "auto")
            return store(value, QStringLiteral("auto"));
        const double number = text.toDouble(&ok);
        return ok && std::isfinite(number) && number >= 0.0 && store(value, number);
    }
    case Kind::Flag:
        ok = text == "yes" || text == "no";
        break;
    case Kind::MarkerMode:
        ok = text == "default" || text == "accurate" || text == "fast";
        break;
    case Kind::Word:
        ok = isWord(text);
        break;
    case Kind::SyncGroup:
        ok = text == "none" || isGroup(text);
        break;
    }
    return ok && store(value, QString::fromLatin1(text));
}

bool check(Kind kind, const QJsonValue& value, QString* why)
{
    bool ok = false;
    switch (kind) {
    case Kind::Integer:
        ok = value.isDouble() && isWhole(value.toDouble());
        break;
    case Kind::Number:
        ok = value.isDouble() && std::isfinite(value.toDouble());
        break;
    case Kind::Exposure:
        ok = value.isDouble() ? std::isfinite(value.toDouble()) && value.toDouble() >= 0.0
                              : value.toString() == QLatin1String("auto");
        break;
    default:
        ok = value.isString() && fromWire(kind, value.toString().toUtf8(), nullptr);
        break;
    }
    if (!ok && why)
        *why = expectation(kind);
    return ok;
}

QByteArray text(const QJsonValue& value)
{
    if (!value.isDouble())
        return value.toString().toUtf8();
    // A snapshot must write back exactly what it read: the fixed six decimals of "%f"
    // would round 0.1234567 and the re-read would then differ.
    const QByteArray number = QByteArray::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    return number == "-0" ? QByteArray("0") : number;
}

QString shown(const QJsonValue& value)
{
    return value.isUndefined() || value.isNull() ? QStringLiteral("(absent)") : QString::fromUtf8(text(value));
}

} // namespace SettingValue
