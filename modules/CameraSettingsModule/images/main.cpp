// Draws the camera settings module's pictures into a folder at build time, so that
// the drawing code, not a binary file, is what the repository keeps.
//
//   camerasettings_picturetool <output folder> [--sheet <file>] <file name>...
//
// Each file name must be one the catalog knows; a name the build asks for but the
// catalog lacks fails the build instead of leaving a resource missing.

#include "ContactSheet.h"
#include "PictureCatalog.h"

#include <QDir>
#include <QGuiApplication>
#include <QStringList>

#include <algorithm>
#include <cstdio>

namespace {

int fail(const QString& message)
{
    std::fprintf(stderr, "camerasettings_picturetool: %s\n", qPrintable(message));
    return 1;
}

} // namespace

int main(int argc, char* argv[])
{
    // Text is drawn with the font database, which only a GUI application provides.
    QGuiApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.isEmpty())
        return fail(QStringLiteral("usage: <output folder> [--sheet <file>] <file name>..."));
    const QDir outDir(args.takeFirst());
    if (!outDir.mkpath(QStringLiteral(".")))
        return fail(QStringLiteral("cannot create %1").arg(outDir.path()));

    QString sheetFile;
    const int sheetOption = args.indexOf(QStringLiteral("--sheet"));
    if (sheetOption >= 0) {
        if (sheetOption + 1 >= args.size())
            return fail(QStringLiteral("--sheet needs a file name"));
        sheetFile = args.at(sheetOption + 1);
        args.erase(args.begin() + sheetOption, args.begin() + sheetOption + 2);
    }

    const std::vector<PictureEntry> catalog = pictureCatalog();
    std::vector<PictureEntry> drawn;
    for (const QString& name : qAsConst(args)) {
        auto entry = std::find_if(catalog.begin(), catalog.end(),
                                  [&name](const PictureEntry& e) { return e.fileName == name; });
        if (entry == catalog.end())
            return fail(QStringLiteral("no drawing for %1").arg(name));
        const QString path = outDir.filePath(name);
        if (!entry->draw().save(path, "PNG"))
            return fail(QStringLiteral("cannot write %1").arg(path));
        drawn.push_back(*entry);
    }

    if (!sheetFile.isEmpty() && !contactSheet(drawn).save(sheetFile, "PNG"))
        return fail(QStringLiteral("cannot write %1").arg(sheetFile));
    return 0;
}
