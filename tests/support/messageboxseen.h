#ifndef MESSAGEBOXSEEN_H
#define MESSAGEBOXSEEN_H

#include <QMessageBox>
#include <QString>

class QWidget;

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

#endif // MESSAGEBOXSEEN_H
