#ifndef JSONLOCATOR_H
#define JSONLOCATOR_H

#include <QByteArray>
#include <QStringList>

// Finds where a value stands in the text of a well-formed JSON document, so that a
// scenario problem found after parsing can still be reported with its line, and finds
// what the parser does not report: a key given twice in one object (Qt's parser keeps
// the last one silently, and loses the memory of the first when that is an array or an
// object). A path step is an object key, or a decimal index inside an array. Keys are
// compared as the parser reads them, escapes decoded.
class JsonLocator
{
public:
    explicit JsonLocator(const QByteArray& text);

    // The 1-based line of the last step of path: its key in an object, its element in
    // an array; the nearest enclosing step's line when the path leads nowhere.
    int lineOf(const QStringList& path) const;
    // The 1-based line of a byte offset, as QJsonParseError::offset gives it.
    static int lineAt(const QByteArray& text, int offset);

    struct DuplicateKey
    {
        QStringList path; // down to the key itself
        int firstLine = 0;
        int secondLine = 0;
    };
    // The first key, in document order, that its object holds twice; false when none.
    // Works on any text, before the parser: where the text stops being well-formed, or
    // nests deeper than the parser takes, it gives up and leaves that to the parser.
    bool findDuplicateKey(DuplicateKey* duplicate) const;

private:
    int skipBlanks(int pos) const;
    int skipString(int pos) const;
    int skipValue(int pos) const;
    // The text of the string whose opening quote is at pos.
    QString stringAt(int pos) const;
    // The position of the child value named by step inside the container at pos, or -1;
    // *stepPos is where its key (or, in an array, the element) starts.
    int child(int pos, const QString& step, int* stepPos) const;
    // Scans the value at pos for a duplicate key; the position after the value, Found
    // (then in *duplicate) or NotWellFormed. path leads to the value.
    enum ScanEnd { Found = -1, NotWellFormed = -2 };
    int scanForDuplicate(int pos, QStringList* path, DuplicateKey* duplicate) const;

    QByteArray m_text;
};

#endif // JSONLOCATOR_H
