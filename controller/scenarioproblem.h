#ifndef SCENARIOPROBLEM_H
#define SCENARIOPROBLEM_H

#include <QString>
#include <QStringList>

// The first thing wrong with a scenario, and where in the document it is.
struct ScenarioProblem
{
    QStringList path; // object keys and array indices leading to the value
    QString reason;
    // The reason is about the last key of path itself (unknown, given twice): the path
    // is shown without it, and the reason's %1 becomes the key, quoted.
    bool aboutKey = false;

    bool found() const { return !reason.isEmpty(); }

    // "cameras[0].model: expected a single word", "cameras[0]: unknown key "colour"".
    QString text() const;

    // A text from the document as a message shows it: in double quotes, with control and
    // other unprintable characters escaped as JSON escapes them, and a long one cut,
    // so that a hostile document cannot put line breaks or megabytes into a message.
    static QString quoted(const QString& text);
};

#endif // SCENARIOPROBLEM_H
