#ifndef HEADLESSRUN_H
#define HEADLESSRUN_H

#include <QString>
#include <QStringList>

class HostWindow;
class ControllerSession;
class QWidget;

// What the host does where no display is: it opens every module's menu entry, saves
// a picture of each page of the dialog that opens (with details as well, if asked),
// closes it with Cancel and prints the command log of the controller in use, so that
// a run on a headless machine still shows what the module did.
class HeadlessRun
{
public:
    HeadlessRun(HostWindow* window, ControllerSession* session, const QString& outputDir);

    // Pictures of each page once more after pressing the dialog's details button.
    void setDetails(bool details) { m_details = details; }

    // Returns the process exit code: 0 when every entry opened a dialog and every
    // picture was written, 1 otherwise.
    int run();
    QStringList savedPictures() const { return m_saved; }

private:
    // Saves every enabled page of the dialog; returns how many pictures it saved.
    int snapshot(QWidget* dialog, const QString& baseName);
    bool save(QWidget* widget, const QString& fileName);

    HostWindow* m_window;
    ControllerSession* m_session;
    QString m_outputDir;
    bool m_details = false;
    QStringList m_saved;
    int m_unwritten = 0;
};

#endif // HEADLESSRUN_H
