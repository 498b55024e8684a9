#ifndef HOSTTRANSLATIONS_H
#define HOSTTRANSLATIONS_H

#include <QObject>
#include <QStringList>

class QLocale;

// The host's and its modules' catalogues for one language: every catalogue in the
// translations folder beside the plug-in folder (NAME_LANGUAGE.qm, one per component),
// and Qt's own for the standard buttons, installed into the application for as long
// as this object lives.
class HostTranslations : public QObject
{
    Q_OBJECT

public:
    explicit HostTranslations(QObject* parent = nullptr);

    // The folder the catalogues of the plug-ins in pluginDir are in.
    static QString folderBeside(const QString& pluginDir);

    // Loads and installs what there is for the locale's languages (de_AT takes _de
    // where there is no _de_AT); returns the file names loaded. English needs none.
    QStringList install(const QLocale& locale, const QString& folder);
    QStringList loaded() const { return m_loaded; }

private:
    bool load(const QLocale& locale, const QString& name, const QString& folder);

    QStringList m_loaded;
};

#endif // HOSTTRANSLATIONS_H
