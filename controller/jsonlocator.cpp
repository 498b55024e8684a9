#include "jsonlocator.h"

#include <algorithm>

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
    for (const QString& step : path) {
        const int next = child(pos, step);
        if (next < 0)
            break;
        pos = next;
    }
    return lineAt(m_text, pos);
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

int JsonLocator::child(int pos, const QString& step) const
{
    if (pos >= m_text.size())
        return -1;
    const bool isObject = m_text.at(pos) == '{';
    if (!isObject && m_text.at(pos) != '[')
        return -1;
    const QByteArray key = '"' + step.toUtf8() + '"';
    bool indexOk = false;
    const int index = step.toInt(&indexOk);
    if (!isObject && !indexOk)
        return -1;
    pos = skipBlanks(pos + 1);
    for (int i = 0; pos < m_text.size() && m_text.at(pos) != '}' && m_text.at(pos) != ']'; ++i) {
        bool found = !isObject && i == index;
        if (isObject) {
            const int keyEnd = skipString(pos);
            found = m_text.mid(pos, keyEnd - pos) == key;
            pos = skipBlanks(keyEnd);
            pos = skipBlanks(pos + 1); // the colon
        }
        if (found)
            return pos;
        pos = skipBlanks(skipValue(pos));
        if (pos < m_text.size() && m_text.at(pos) == ',')
            pos = skipBlanks(pos + 1);
    }
    return -1;
}
