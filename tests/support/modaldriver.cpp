#include "modaldriver.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QApplication>
#include <QDialog>
#include <QtTest>

// A look for the modal widget comes every millisecond: the one that finds it runs as
// soon as its event loop does, so that no test waits for anything.
static const int LookIntervalMs = 1;

MessageBoxSeen MessageBoxSeen::of(const QMessageBox* box)
{
    MessageBoxSeen seen;
    seen.title = box->windowTitle();
    seen.text = box->text();
    seen.informativeText = box->informativeText();
    seen.icon = box->icon();
    seen.buttons = box->standardButtons();
    seen.defaultButton = box->standardButton(box->defaultButton());
    seen.parent = box->parentWidget();
    return seen;
}

ModalDriver::ModalDriver(int watchdogMs) : m_watchdogMs(watchdogMs)
{
    connect(&m_watchdog, &QTimer::timeout, this, &ModalDriver::watch);
    m_watchdog.start(watchdogMs);
    connect(&m_answering, &QTimer::timeout, this, [this] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            answer(box, m_choose());
    });
}

void ModalDriver::whenModalWidget(const std::function<bool(QWidget*)>& accepts,
                                  const std::function<void(QWidget*)>& fn)
{
    ++m_pending;
    const int tries = m_watchdogMs / LookIntervalMs;
    QTimer::singleShot(0, this, [this, accepts, fn, tries] { look(accepts, fn, tries); });
}

void ModalDriver::look(const std::function<bool(QWidget*)>& accepts, const std::function<void(QWidget*)>& fn,
                       int triesLeft)
{
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || !accepts(modal)) {
        if (triesLeft > 0) {
            QTimer::singleShot(LookIntervalMs, this, [=] { look(accepts, fn, triesLeft - 1); });
        } else {
            --m_pending;
            QTest::qFail("the expected modal widget never showed up", __FILE__, __LINE__);
        }
        return;
    }
    --m_pending;
    m_lastModal = nullptr; // driven now: the watchdog starts its period afresh
    fn(modal);
}

void ModalDriver::answerMessageBox(QMessageBox::StandardButton button)
{
    whenModal<QMessageBox>([this, button](QMessageBox* box) { answer(box, button); });
}

void ModalDriver::answerEveryMessageBox(const std::function<QMessageBox::StandardButton()>& choose)
{
    m_choose = choose;
    // Looked for in every pass of whichever event loop runs, a message box's own included.
    m_answering.start(0);
}

void ModalDriver::stopAnswering()
{
    m_answering.stop();
}

void ModalDriver::answer(QMessageBox* box, QMessageBox::StandardButton button)
{
    m_boxes << MessageBoxSeen::of(box);
    if (QAbstractButton* clicked = box->button(button))
        clicked->click();
    else
        box->reject();
}

void ModalDriver::watch()
{
    // A modal widget that stood for a whole watchdog period with nobody about to handle
    // it would hold the test for ever: note it, fail, and close it.
    QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal == m_lastModal && m_pending == 0 && !m_answering.isActive()) {
        const auto* box = qobject_cast<QMessageBox*>(modal);
        const QString what = box ? QStringLiteral("message box \"%1\"").arg(box->text()) : modal->objectName();
        if (box)
            m_boxes << MessageBoxSeen::of(box);
        QTest::qFail(qPrintable(QStringLiteral("unanswered modal widget: ") + what), __FILE__, __LINE__);
        if (auto* dialog = qobject_cast<QDialog*>(modal))
            dialog->reject();
        else
            modal->close();
        modal = nullptr;
    }
    m_lastModal = modal;
}
