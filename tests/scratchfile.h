#ifndef SCRATCHFILE_H
#define SCRATCHFILE_H

// A file of the given text in a scratch folder, for a tool to read or to stand in its
// way; its path, empty when it could not be written.
#include <QFile>
#include <QTemporaryDir>

inline QString scratchFile(const QTemporaryDir& dir, const QString& name, const QByteArray& text)
{
    QFile file(dir.filePath(name));
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size() ? file.fileName() : QString();
}

#endif // SCRATCHFILE_H
