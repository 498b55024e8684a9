#include "headlessrun.h"

#include "commandlogpanel.h"
#include "controllersession.h"
#include "hostmessagelog.h"
#include "hostwindow.h"
#include "modulehost.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>

namespace {

// The run's report is UTF-8 whatever the locale, so that translated texts survive.
void print(const QString& text)
{
    fputs(text.toUtf8().constData(), stdout);
    fputc('\n', stdout);
}

// A menu text as the operator reads it: "H&ardware" is "Hardware", "&&" is "&".
QString withoutMnemonics(const QString& text)
{
    QString plain;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&') && i + 1 < text.size())
            ++i;
        plain += text.at(i);
    }
    return plain;
}

const char* const kDetailsButton = "pushButton_showDetails";

} // namespace

HeadlessRun::HeadlessRun(HostWindow* window, ControllerSession* session, const QString& outputDir)
    : m_window(window), m_session(session), m_outputDir(outputDir)
{
}

int HeadlessRun::run()
{
    if (!QDir().mkpath(m_outputDir))
        fprintf(stderr, "Could not create the folder %s\n", qPrintable(QDir::toNativeSeparators(m_outputDir)));
    m_window->show();
    save(m_window, QStringLiteral("host.png"));

    int failures = 0;
    int entry = 0;
    for (_GuiElement* element : m_window->moduleHost()->guiElements()) {
        if (!element->menu_entry)
            continue;
        const QString baseName = QStringLiteral("entry%1").arg(++entry);
        bool opened = false;
        int pictures = 0;
        bool detailsShown = false;
        // The entry opens a modal dialog; its event loop runs this timer.
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal)
                return;
            opened = true;
            pictures = snapshot(modal, baseName);
            auto* details = modal->findChild<QAbstractButton*>(QLatin1String(kDetailsButton));
            if (m_details && details && details->isVisible()) {
                details->click();
                detailsShown = true;
                pictures += snapshot(modal, baseName + QStringLiteral("-details"));
            }
            if (auto* dialog = qobject_cast<QDialog*>(modal))
                dialog->reject();
        });
        timer.start(0);
        element->menu_entry->trigger();
        QApplication::processEvents();
        const QString what = QStringLiteral("\"%1\" > \"%2\"").arg(withoutMnemonics(element->menu_name),
                                                                   withoutMnemonics(element->menu_entry->text()));
        if (!opened)
            print(QStringLiteral("FAILED to open %1: no modal dialog").arg(what));
        else if (m_details && !detailsShown)
            print(QStringLiteral("opened %1: saved %2 picture(s), no details to show, closed with Cancel").arg(what).arg(pictures));
        else
            print(QStringLiteral("opened %1: saved %2 picture(s)%3, closed with Cancel")
                      .arg(what)
                      .arg(pictures)
                      .arg(detailsShown ? QStringLiteral(" with and without details") : QString()));
        failures += opened ? 0 : 1;
    }
    if (entry == 0) {
        print(QStringLiteral("No module offered a menu entry."));
        failures = 1;
    }

    print(QStringLiteral("\nPictures:"));
    for (const QString& file : qAsConst(m_saved))
        print(QStringLiteral("  ") + QDir::toNativeSeparators(file));
    const QString controller = m_session->isRemote()
                                   ? m_session->connectionState()
                                   : QStringLiteral("simulated, scenario \"%1\"").arg(m_session->scenarioName());
    print(QStringLiteral("\nCommand log (%1):").arg(controller));
    for (const QString& line : CommandLogPanel::lines(*m_session))
        print(line);
    print(QStringLiteral("\nMessages posted by modules: %1").arg(m_session->messages()->entries().size()));
    for (const QString& message : m_session->messages()->entries())
        print(QStringLiteral("  ") + message);
    fflush(stdout);
    if (m_unwritten > 0)
        fprintf(stderr, "%d picture(s) could not be written to %s\n", m_unwritten,
                qPrintable(QDir::toNativeSeparators(m_outputDir)));
    return failures == 0 && m_unwritten == 0 ? 0 : 1;
}

int HeadlessRun::snapshot(QWidget* dialog, const QString& baseName)
{
    auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
    if (!tabs || !tabs->isVisible() || tabs->count() < 2)
        return save(dialog, baseName + QStringLiteral(".png")) ? 1 : 0;
    int saved = 0;
    const int current = tabs->currentIndex();
    for (int i = 0; i < tabs->count(); ++i) {
        if (!tabs->isTabEnabled(i))
            continue;
        tabs->setCurrentIndex(i);
        QApplication::processEvents();
        saved += save(dialog, QStringLiteral("%1-tab%2.png").arg(baseName).arg(i)) ? 1 : 0;
    }
    tabs->setCurrentIndex(current);
    return saved;
}

bool HeadlessRun::save(QWidget* widget, const QString& fileName)
{
    const QString path = QDir(m_outputDir).absoluteFilePath(fileName);
    const bool ok = widget->grab().save(path, "PNG");
    if (ok) {
        m_saved << path;
    } else {
        ++m_unwritten;
        fprintf(stderr, "Could not write %s\n", qPrintable(QDir::toNativeSeparators(path)));
    }
    return ok;
}
