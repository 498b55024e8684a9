#ifndef HEADLESSRUN_H
#define HEADLESSRUN_H

#include <QString>
#include <QStringList>

class HostWindow;
class ControllerSession;
class QWidget;

// What the host does where no display is: it opens every module's menu entry, saves
// a picture of each page of the dialog that opens, closes it with Cancel and prints
// the controller's command log, so that a run on a headless machine still shows
// what the module did.
class HeadlessRun
{
public:
    HeadlessRun(HostWindow* window, ControllerSession* session, const QString& outputDir);

    // Returns the process exit code: 0 when every entry opened a dialog.
    int run();
    QStringList savedPictures() const { return m_saved; }

private:
    void snapshot(QWidget* dialog, const QString& baseName);
    bool save(QWidget* widget, const QString& fileName);

    HostWindow* m_window;
    ControllerSession* m_session;
    QString m_outputDir;
    QStringList m_saved;
};

#endif // HEADLESSRUN_H
