#include "jsonlocator.h"

#include <QHash>

#include <algorithm>

namespace {

// Qt's parser refuses documents nested deeper than this.
const int kDeepestNesting = 1024;

} // namespace

JsonLocator::JsonLocator(const QByteArray& text)
    : m_text(text)
{
}

int JsonLocator::lineAt(const QByteArray& text, int offset)
{
    const int end = qBound(0, offset, text.size());
    return 1 + int(std::count(text.constBegin(), text.constBegin() + end, '\n'));
}

int JsonLocator::lineOf(const QStringList& path) const
{
    int pos = skipBlanks(0);
    int stepPos = pos;
    for (const QString& step : path) {
        int found = 0;
        const int next = child(pos, step, &found);
        if (next < 0)
            break;
        pos = next;
        stepPos = found;
    }
    return lineAt(m_text, stepPos);
}

bool JsonLocator::findDuplicateKey(DuplicateKey* duplicate) const
{
    QStringList path;
    return scanForDuplicate(skipBlanks(0), &path, duplicate) == Found;
}

int JsonLocator::skipBlanks(int pos) const
{
    while (pos < m_text.size() && (m_text.at(pos) == ' ' || m_text.at(pos) == '\t' || m_text.at(pos) == '\n'
                                   || m_text.at(pos) == '\r'))
        ++pos;
    return pos;
}

int JsonLocator::skipString(int pos) const
{
    // pos is at the opening quote.
    for (++pos; pos < m_text.size(); ++pos) {
        if (m_text.at(pos) == '\\')
            ++pos;
        else if (m_text.at(pos) == '"')
            return pos + 1;
    }
    return m_text.size();
}

int JsonLocator::skipValue(int pos) const
{
    if (pos >= m_text.size())
        return pos;
    const char first = m_text.at(pos);
    if (first == '"')
        return skipString(pos);
    if (first == '{' || first == '[') {
        int depth = 0;
        while (pos < m_text.size()) {
            const char c = m_text.at(pos);
            if (c == '"') {
                pos = skipString(pos);
                continue;
            }
            if (c == '{' || c == '[')
                ++depth;
            else if ((c == '}' || c == ']') && --depth == 0)
                return pos + 1;
            ++pos;
        }
        return pos;
    }
    while (pos < m_text.size() && !QByteArray(",]} \t\r\n").contains(m_text.at(pos)))
        ++pos;
    return pos;
}

QString JsonLocator::stringAt(int pos) const
{
    // A \u escape gives one UTF-16 unit, as the parser takes it. In a text the parser has
    // not seen yet an escape may be broken; it is read within the string all the same.
    const int end = skipString(pos) - 1;
    QString text;
    QByteArray raw;
    for (++pos; pos < end; ++pos) {
        if (m_text.at(pos) != '\\' || pos + 1 >= end) {
            raw += m_text.at(pos);
            continue;
        }
        text += QString::fromUtf8(raw.constData(), raw.size());
        raw.clear();
        const char escaped = m_text.at(++pos);
        switch (escaped) {
        case 'b': text += QLatin1Char('\b'); break;
        case 'f': text += QLatin1Char('\f'); break;
        case 'n': text += QLatin1Char('\n'); break;
        case 'r': text += QLatin1Char('\r'); break;
        case 't': text += QLatin1Char('\t'); break;
        case 'u':
            text += QChar(m_text.mid(pos + 1, qMin(4, end - pos - 1)).toUShort(nullptr, 16));
            pos += qMin(4, end - pos - 1);
            break;
        default: text += QLatin1Char(escaped); break; // \" \\ \/
        }
    }
    return text + QString::fromUtf8(raw.constData(), raw.size());
}

int JsonLocator::child(int pos, const QString& step, int* stepPos) const
{
    if (pos >= m_text.size())
        return -1;
    const bool isObject = m_text.at(pos) == '{';
    if (!isObject && m_text.at(pos) != '[')
        return -1;
    bool indexOk = false;
    const int index = step.toInt(&indexOk);
    if (!isObject && !indexOk)
        return -1;
    pos = skipBlanks(pos + 1);
    for (int i = 0; pos < m_text.size() && m_text.at(pos) != '}' && m_text.at(pos) != ']'; ++i) {
        const int start = pos;
        bool found = !isObject && i == index;
        if (isObject) {
            found = stringAt(pos) == step;
            pos = skipBlanks(skipString(pos));
            pos = skipBlanks(pos + 1); // the colon
        }
        if (found) {
            *stepPos = start;
            return pos;
        }
        pos = skipBlanks(skipValue(pos));
        if (pos < m_text.size() && m_text.at(pos) == ',')
            pos = skipBlanks(pos + 1);
    }
    return -1;
}

int JsonLocator::scanForDuplicate(int pos, QStringList* path, DuplicateKey* duplicate) const
{
    if (pos >= m_text.size())
        return NotWellFormed;
    if (m_text.at(pos) != '{' && m_text.at(pos) != '[')
        return skipValue(pos);
    if (path->size() >= kDeepestNesting)
        return NotWellFormed;
    const bool isObject = m_text.at(pos) == '{';
    const char close = isObject ? '}' : ']';
    QHash<QString, int> keys; // key text, where it starts
    pos = skipBlanks(pos + 1);
    for (int i = 0; pos < m_text.size() && m_text.at(pos) != close; ++i) {
        QString step = QString::number(i);
        if (isObject) {
            if (m_text.at(pos) != '"')
                return NotWellFormed;
            step = stringAt(pos);
            const auto first = keys.constFind(step);
            if (first != keys.constEnd()) {
                duplicate->path = *path;
                duplicate->path.append(step);
                duplicate->firstLine = lineAt(m_text, first.value());
                duplicate->secondLine = lineAt(m_text, pos);
                return Found;
            }
            keys.insert(step, pos);
            pos = skipBlanks(skipString(pos));
            if (pos >= m_text.size() || m_text.at(pos) != ':')
                return NotWellFormed;
            pos = skipBlanks(pos + 1);
        }
        path->append(step);
        pos = scanForDuplicate(pos, path, duplicate);
        if (pos < 0)
            return pos;
        path->removeLast();
        pos = skipBlanks(pos);
        if (pos < m_text.size() && m_text.at(pos) == ',')
            pos = skipBlanks(pos + 1);
        else if (pos >= m_text.size() || m_text.at(pos) != close)
            return NotWellFormed;
    }
    return pos < m_text.size() ? pos + 1 : NotWellFormed;
}
