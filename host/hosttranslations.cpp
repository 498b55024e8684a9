#include "hosttranslations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

HostTranslations::HostTranslations(QObject* parent)
    : QObject(parent)
{
}

QString HostTranslations::folderBeside(const QString& pluginDir)
{
    return QDir::cleanPath(QDir(pluginDir).absoluteFilePath(QStringLiteral("../translations")));
}

QStringList HostTranslations::install(const QLocale& locale, const QString& folder)
{
    // A catalogue's name is what comes before the first '_': the language follows it.
    QStringList names;
    for (const QString& file : QDir(folder).entryList(QStringList(QStringLiteral("*_*.qm")), QDir::Files, QDir::Name)) {
        const QString name = file.section(QLatin1Char('_'), 0, 0);
        if (!names.contains(name))
            names << name;
    }
    // Qt's own catalogue, where the system has it, translates the standard buttons.
    load(locale, QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    for (const QString& name : qAsConst(names))
        load(locale, name, folder);
    return m_loaded;
}

bool HostTranslations::load(const QLocale& locale, const QString& name, const QString& folder)
{
    auto* translator = new QTranslator(this);
    if (!translator->load(locale, name, QStringLiteral("_"), folder) || !QCoreApplication::installTranslator(translator)) {
        delete translator;
        return false;
    }
    m_loaded << QFileInfo(translator->filePath()).fileName();
    return true;
}
