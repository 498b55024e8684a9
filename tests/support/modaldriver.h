#ifndef MODALDRIVER_H
#define MODALDRIVER_H

// Drives modal exec() loops as the operator does: a handler runs on the next modal widget
// once its event loop runs, and message boxes are answered by clicking their buttons. A
// watchdog fails the test and closes a modal widget that nobody handles, or a handler whose
// widget never shows up, so that a suite fails instead of hanging.

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

// What a message box showed before the modal driver answered it.
struct MessageBoxSeen
{
    QString title;
    QString text;
    QString informativeText;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    QWidget* parent = nullptr;

    static MessageBoxSeen of(const QMessageBox* box);
};

class ModalDriver : public QObject
{
    Q_OBJECT

public:
    explicit ModalDriver(int watchdogMs = 5000);

    // fn runs on the next modal widget that is a T (other than `except`).
    template <typename T>
    void whenModal(const std::function<void(T*)>& fn, QWidget* except = nullptr)
    {
        whenModalWidget([except](QWidget* w) { return w != except && qobject_cast<T*>(w); },
                        [fn](QWidget* w) { fn(qobject_cast<T*>(w)); });
    }
    // fn runs on the next modal widget that `accepts` takes.
    void whenModalWidget(const std::function<bool(QWidget*)>& accepts, const std::function<void(QWidget*)>& fn);
    // Answers the next message box with `button` after noting what it showed.
    void answerMessageBox(QMessageBox::StandardButton button);
    // Until stopAnswering(), every message box that shows up is noted and answered with
    // the button `choose` picks for it.
    void answerEveryMessageBox(const std::function<QMessageBox::StandardButton()>& choose);
    void stopAnswering();
    const QList<MessageBoxSeen>& messageBoxes() const { return m_boxes; }

private:
    void look(const std::function<bool(QWidget*)>& accepts, const std::function<void(QWidget*)>& fn, int triesLeft);
    void watch();
    void answer(QMessageBox* box, QMessageBox::StandardButton button);

    int m_watchdogMs;
    QTimer m_watchdog;
    QTimer m_answering;
    std::function<QMessageBox::StandardButton()> m_choose;
    QPointer<QWidget> m_lastModal;
    int m_pending = 0;
    QList<MessageBoxSeen> m_boxes;
};

#endif // MODALDRIVER_H
