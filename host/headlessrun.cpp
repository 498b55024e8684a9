#include "headlessrun.h"

#include "commandlogpanel.h"
#include "controllersession.h"
#include "hostmessagelog.h"
#include "hostwindow.h"
#include "modulehost.h"
#include "simulatedcontroller.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>

HeadlessRun::HeadlessRun(HostWindow* window, ControllerSession* session, const QString& outputDir)
    : m_window(window), m_session(session), m_outputDir(outputDir)
{
}

int HeadlessRun::run()
{
    QDir().mkpath(m_outputDir);
    m_window->show();
    save(m_window, QStringLiteral("host.png"));

    int failures = 0;
    int entry = 0;
    for (_GuiElement* element : m_window->moduleHost()->guiElements()) {
        if (!element->menu_entry)
            continue;
        const QString baseName = QStringLiteral("entry%1").arg(++entry);
        bool opened = false;
        // The entry opens a modal dialog; its event loop runs this timer.
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal)
                return;
            opened = true;
            snapshot(modal, baseName);
            if (auto* dialog = qobject_cast<QDialog*>(modal))
                dialog->reject();
        });
        timer.start(0);
        element->menu_entry->trigger();
        QApplication::processEvents();
        printf("%s \"%s\" > \"%s\": %s\n", opened ? "opened" : "FAILED to open",
               qPrintable(element->menu_name), qPrintable(element->menu_entry->text()),
               opened ? "saved pictures, closed with Cancel" : "no modal dialog");
        failures += opened ? 0 : 1;
    }
    if (entry == 0) {
        printf("No module offered a menu entry.\n");
        failures = 1;
    }

    printf("\nPictures:\n");
    for (const QString& file : qAsConst(m_saved))
        printf("  %s\n", qPrintable(QDir::toNativeSeparators(file)));
    printf("\nController command log (scenario \"%s\"):\n", qPrintable(m_session->scenarioName()));
    for (const CommandLogEntry& logEntry : m_session->controller()->log())
        printf("%s\n", qPrintable(CommandLogPanel::format(logEntry)));
    printf("\nMessages posted by modules: %d\n", m_session->messages()->entries().size());
    for (const QString& message : m_session->messages()->entries())
        printf("  %s\n", qPrintable(message));
    fflush(stdout);
    return failures == 0 ? 0 : 1;
}

void HeadlessRun::snapshot(QWidget* dialog, const QString& baseName)
{
    auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
    if (!tabs || !tabs->isVisible() || tabs->count() < 2) {
        save(dialog, baseName + QStringLiteral(".png"));
        return;
    }
    const int current = tabs->currentIndex();
    for (int i = 0; i < tabs->count(); ++i) {
        if (!tabs->isTabEnabled(i))
            continue;
        tabs->setCurrentIndex(i);
        QApplication::processEvents();
        save(dialog, QStringLiteral("%1-tab%2.png").arg(baseName).arg(i));
    }
    tabs->setCurrentIndex(current);
}

bool HeadlessRun::save(QWidget* widget, const QString& fileName)
{
    const QString path = QDir(m_outputDir).absoluteFilePath(fileName);
    const bool ok = widget->grab().save(path, "PNG");
    if (ok)
        m_saved << path;
    else
        fprintf(stderr, "Could not write %s\n", qPrintable(path));
    return ok;
}
