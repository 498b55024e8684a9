#ifndef JSONLOCATOR_H
#define JSONLOCATOR_H

#include <QByteArray>
#include <QStringList>

// Finds where a value stands in the text of a well-formed JSON document, so that a
// scenario problem found after parsing can still be reported with its line.
// A path step is an object key, or a decimal index inside an array.
class JsonLocator
{
public:
    explicit JsonLocator(const QByteArray& text);

    // The 1-based line of the value at path; the nearest enclosing value's line
    // when the path leads nowhere.
    int lineOf(const QStringList& path) const;
    // The 1-based line of a byte offset, as QJsonParseError::offset gives it.
    static int lineAt(const QByteArray& text, int offset);

private:
    int skipBlanks(int pos) const;
    int skipString(int pos) const;
    int skipValue(int pos) const;
    // The position of the child value named by step inside the container at pos, or -1.
    int child(int pos, const QString& step) const;

    QByteArray m_text;
};

#endif // JSONLOCATOR_H
