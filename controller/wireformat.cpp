#include "wireformat.h"

#include <QList>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace WireFormat {

namespace {

QByteArray twoDigits(int number)
{
    return QByteArray::number(number).rightJustified(2, '0');
}

} // namespace

QByteArray errorLine(ControllerError code, const QByteArray& text)
{
    // A double quote inside the text would end it early for the reader.
    QByteArray clean = text;
    clean.replace('"', '\'');
    return "quarvo2 err " + QByteArray::number(static_cast<int>(code)) + " \"" + clean + '"';
}

QByteArray yesNo(bool on)
{
    return on ? QByteArrayLiteral("yes") : QByteArrayLiteral("no");
}

QByteArray number(int value)
{
    return QByteArray::number(value);
}

QByteArray number(double value)
{
    // The shortest text that reads back as the same number, never in exponent form:
    // 0.57 stays 0.57 however it was written ("0.570000").
    QByteArray text = QString::number(value, 'f', QLocale::FloatingPointShortest).toLatin1();
    if (text == "-0")
        text = "0";
    return text;
}

QByteArray word(const QString& text)
{
    return text.toUtf8();
}

QByteArray description(const QString& text)
{
    if (text.isEmpty() || text.contains(QLatin1Char(' ')))
        return '"' + text.toUtf8() + '"';
    return text.toUtf8();
}

QByteArray indexWord(char letter, int number)
{
    return letter + twoDigits(number);
}

bool holdsControlCharacter(const QByteArray& line)
{
    return std::any_of(line.constBegin(), line.constEnd(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7f;
    });
}

bool parseYesNo(const QByteArray& word, bool* on)
{
    if (word != "yes" && word != "no")
        return false;
    *on = word == "yes";
    return true;
}

bool parseInt(const QByteArray& word, int* value)
{
    bool ok = false;
    const int parsed = word.toInt(&ok, 10);
    if (ok)
        *value = parsed;
    return ok;
}

bool parseDouble(const QByteArray& word, double* value)
{
    bool ok = false;
    const double parsed = word.toDouble(&ok);
    if (!ok || !std::isfinite(parsed))
        return false;
    *value = parsed;
    return true;
}

bool parseIndexWord(const QByteArray& word, const QByteArray& prefix, int* number)
{
    if (word.size() <= prefix.size() || !word.startsWith(prefix))
        return false;
    for (int i = prefix.size(); i < word.size(); ++i) {
        if (word.at(i) < '0' || word.at(i) > '9')
            return false;
    }
    int parsed = 0;
    if (!parseInt(word.mid(prefix.size()), &parsed) || parsed < 1)
        return false;
    *number = parsed;
    return true;
}

bool parseSyncGroup(const QByteArray& value, int* channel)
{
    if (value == "none") {
        *channel = 0;
        return true;
    }
    const QList<QByteArray> words = value.split(' ');
    return words.size() == 2 && words.at(0) == "d01" && parseIndexWord(words.at(1), "ch", channel);
}

QByteArray syncGroup(int channel)
{
    return channel < 1 ? QByteArrayLiteral("none") : "d01 ch" + twoDigits(channel);
}

bool parseValue(const QByteArray& word, bool* value) { return parseYesNo(word, value); }
bool parseValue(const QByteArray& word, int* value) { return parseInt(word, value); }
bool parseValue(const QByteArray& word, double* value) { return parseDouble(word, value); }

bool parseValue(const QByteArray& word, QString* value)
{
    if (word.isEmpty() || word.contains(' '))
        return false;
    *value = QString::fromUtf8(word);
    return true;
}

QByteArray formatValue(bool value) { return yesNo(value); }
QByteArray formatValue(int value) { return number(value); }
QByteArray formatValue(double value) { return number(value); }
QByteArray formatValue(const QString& value) { return word(value); }

} // namespace WireFormat
